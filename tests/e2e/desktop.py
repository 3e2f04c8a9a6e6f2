"""A virtual desktop: display, window manager, message bus, pointer and keyboard."""

import os
import re
import shutil
import subprocess
import tempfile
import threading
import time

from screenreader import Bus

class Timeout(AssertionError):
    """A condition did not become true in time."""


def wait_until(condition, what, timeout=20.0):
    """Waits until `condition()` returns a true value, and returns that. `what` names it in a failure."""
    end = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Timeout(f"{what} did not come within {timeout:g} s")
        time.sleep(0.02)


class Desktop:
    """A virtual display with a window manager and a message bus (which also leads to the accessibility
    bus). `manager` is the window manager's command; None starts no window manager."""

    def __init__(self, width=1920, height=1080, manager=("openbox", "--sm-disable")):
        self.width, self.height = width, height
        read_end, write_end = os.pipe()
        self.folder = tempfile.mkdtemp(prefix="desktop-")
        log = open(os.path.join(self.folder, "log"), "wb")
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0",
             f"{width}x{height}x24", "-dpi", "96", "-ac", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stdout=log, stderr=log)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("the virtual display did not start")
        self.display = f":{number}"
        self.environment = {**os.environ, "DISPLAY": self.display,
                            "XDG_RUNTIME_DIR": self.folder}
        for name in ("WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS", "XDG_SESSION_TYPE"):
            self.environment.pop(name, None)
        self.message_bus = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address=1"], env=self.environment,
            stdout=subprocess.PIPE, stderr=log)
        bus_address = self.message_bus.stdout.readline().decode().strip()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus_address
        self.manager = None
        if manager:
            self.manager = subprocess.Popen(manager, env=self.environment, stdout=log, stderr=log)
            wait_until(self._has_manager, "the window manager")
            wait_until(self._gives_keyboard, "the window manager to give the keyboard to a window")
        self._watch(log)
        log.close()
        self.accessibility = Bus(bus_address)

    def _has_manager(self):
        shown = self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check=False)
        return "window id" in shown

    def _gives_keyboard(self):
        """Whether a new window gets the keyboard within half a second. A window manager that is still starting
        can leave a window without it, or unmapped, for good."""
        probe = subprocess.Popen(["xev", "-event", "mouse"], env=self.environment,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

        def has_keyboard():
            shown = self.run("xdotool", "search", "--onlyvisible", "--name", "^Event Tester$", check=False)
            return any(self.has_keyboard(int(window)) for window in shown.split())

        try:
            return wait_until(has_keyboard, "the probe's keyboard", 0.5)
        except Timeout:
            return False
        finally:
            probe.terminate()
            probe.wait()

    def _watch(self, log):
        """Records all windows of the display: polling could miss a window that shows only briefly."""
        self.created = []  # in order of creation
        self.watcher = subprocess.Popen(["xev", "-root", "-event", "substructure"],
                                        env=self.environment, stdout=subprocess.PIPE, stderr=log,
                                        text=True)

        def keep():
            event = None
            for line in self.watcher.stdout:
                report = re.match(r"(\w+)Notify event", line)
                event = report.group(1) if report else event
                window = re.match(r" .*, window (0x[0-9a-f]+)", line)
                if window and event == "Create":
                    self.created.append(int(window.group(1), 16))

        threading.Thread(target=keep, daemon=True).start()

    def run(self, *command, check=True):
        """Runs an X client and returns its output."""
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True)
        if check and done.returncode != 0:
            raise RuntimeError(f"{' '.join(command)}: {done.stderr.strip()}")
        return done.stdout

    def close(self):
        processes = [process for process in
                     (self.watcher, self.manager, self.message_bus, self.server) if process]
        for process in processes:
            process.terminate()
        for process in processes:
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    # Windows

    def windows(self, pid, title=None):
        """The visible windows of a process, including pop-ups; only those with this title if one
        is given."""
        command = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(pid)]
        if title is not None:
            command += ["--name", f"^{re.escape(title)}$"]
        return [int(line) for line in self.run(*command, check=False).split()]

    def created_by(self, client, since):
        """The windows that one program has created after the first `since` windows of the display. `client`
        is any window of that program: the numbers of all its windows have the same upper bits."""
        return [window for window in self.created[since:] if (window ^ client) < 1 << 21]

    def is_there(self, window):
        """Whether a window exists, visible or not. Asks the server, since the destruction is reported only to
        the window's parent, which can be the window manager's frame."""
        return "Width:" in self.run("xwininfo", "-id", str(window), check=False)

    def has_keyboard(self, window):
        """Whether this window has the keyboard focus."""
        return self.run("xdotool", "getwindowfocus", "-f", check=False).strip() == str(window)

    def client_area(self, window):
        """Position on the screen and size of a window's client area, in pixels."""
        output = self.run("xwininfo", "-id", str(window))

        def number(label):
            return int(re.search(rf"{label}:\s+(-?\d+)", output).group(1))

        return (number("Absolute upper-left X"), number("Absolute upper-left Y"),
                number("Width"), number("Height"))

    def frame(self, window):
        """The widths of a window's frame in pixels: left, right, top, bottom."""
        output = self.run("xprop", "-id", str(window), "_NET_FRAME_EXTENTS")
        return tuple(map(int, output.split("=")[1].split(",")))

    def is_filled_by(self, window):
        """Whether a window and its frame fill the desktop."""
        x, y, width, height = self.client_area(window)
        left, right, top, bottom = self.frame(window)
        return ((x - left, y - top, x + width + right, y + height + bottom) ==
                (0, 0, self.width, self.height))

    def minimise(self, window):
        """Minimises a window that shows itself again, and waits until the window manager has done both. Waits for
        two seconds only: mutter minimises no dialog, and metacity changes nothing if both requests reach it at
        once."""
        with tempfile.TemporaryFile("a+b") as report:
            spy = subprocess.Popen(["xprop", "-spy", "-id", str(window), "WM_STATE"],
                                   env=self.environment, stdout=report)

            def states():
                """How often the state was reported: at the start, and at each change."""
                report.seek(0)
                return report.read().count(b"window state")

            try:
                wait_until(lambda: states() == 1, "the window's state")
                self.xdotool("windowminimize", window)
                wait_until(lambda: states() >= 3, "both changes of the window's state", 2)
            except Timeout:
                pass
            finally:
                spy.terminate()
                spy.wait()

    def close_box(self, window):
        """The centre of the close box in a window's frame: the last box in its title bar."""
        left, top, width, _ = self.client_area(window)
        bar = self.frame(window)[2]
        return left + width - bar // 2, top - bar // 2

    def double_click_title(self, window):
        """Double-clicks a window's title bar, which restores or maximises it in most window managers."""
        left, top, width, _ = self.client_area(window)
        self.xdotool("mousemove", left + width // 2, top - self.frame(window)[2] // 2,
                  "click", "--repeat", 2, "--delay", 60, 1)

    def kill_server(self):
        """Ends the display while programs still use it."""
        self.server.kill()
        self.server.wait()

    # Pointer and keyboard, through the X server

    def xdotool(self, *words):
        """Acts as the user, by the commands of xdotool."""
        self.run("xdotool", *[str(word) for word in words])

    def screenshot(self, path):
        self.run("import", "-silent", "-window", "root", str(path), check=False)

    def colour(self, x, y):
        """The colour of one pixel of the screen, as 0xRRGGBB."""
        output = self.run("import", "-silent", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth",
                        "8", "txt:-")
        return int(re.search(r"#([0-9A-F]{6})", output).group(1), 16)
