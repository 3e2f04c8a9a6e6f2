"""What every real-window test stands on: a shop, the program running in it, its screens and a hand."""

import os
import pathlib
import signal
import subprocess
import tempfile
import unittest

import controls
from desktop import wait_until
from screenreader import Gone
from shop import Shop


class World:
    """What one run of the suite shares: the desktop, the accessibility bus, the built programs."""

    desktop = None
    bus = None
    build = None
    pictures = None  # where a failing case leaves what it saw


class Program:
    """The program under test, started in a shop."""

    def __init__(self, shop, user=None, command=None):
        self.shop = shop
        environment = {**World.desktop.environment, "XDG_CONFIG_HOME": str(shop.settings),
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "LC_ALL": "C.UTF-8"}
        command = command or [str(shop.program)]
        if user is not None:
            command = ["setpriv", f"--reuid={user}", f"--regid={user}", "--clear-groups", *command]
            environment["HOME"] = str(shop.folder)
            environment["XDG_RUNTIME_DIR"] = str(shop.folder)
        self._errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen(command, env=environment, cwd="/",
                                        stdin=subprocess.DEVNULL, stdout=self._errors,
                                        stderr=self._errors, start_new_session=True)

    @property
    def pid(self):
        return self.process.pid

    def errors(self):
        """What the program has said on standard error (and output) so far."""
        self._errors.seek(0)
        return self._errors.read().decode("utf-8", "replace")

    def status(self, timeout=20):
        """The exit status, once the program has ended."""
        wait_until(lambda: self.process.poll() is not None, "the program's end", timeout)
        return self.process.returncode

    def running(self):
        return self.process.poll() is None

    def stop(self):
        if self.running():
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        self._errors.close()

    def window(self, title):
        """The shown window with this title, once it is there and the program hasn't ended."""

        def shown():
            found = World.desktop.windows(self.pid, title)
            if not found and not self.running():
                raise AssertionError(f"the program ended with status {self.process.returncode} "
                                     f"before its window {title!r}: {self.errors()}")
            return found

        return wait_until(shown, f"the window {title!r}")[0]

    def root(self):
        return wait_until(lambda: World.bus.program(self.pid), "the program on the accessibility bus")

    def top(self, title):
        """The node of a window by its title, once a screen reader sees it."""

        def shown():
            for node in self.root().children():
                if node.name == title and "showing" in node.states():
                    return node
            return None

        return wait_until(lambda: _alive(shown), f"the screen {title!r}")


def _alive(read):
    """What `read()` gives, None where a part of the screen went away under it."""
    try:
        return read()
    except Gone:
        return None


class Screen:
    """One of the program's windows: a hand on its controls, a reader's eye on what they show."""

    def __init__(self, program, title, table):
        self.program, self.title, self.table = program, title, table
        self.window = program.window(title)
        self.node = program.top(title)
        wait_until(self._settled, f"{title!r} to stand still")
        self.left, self.top, self.width, self.height = World.desktop.origin(self.window)

    def _settled(self):
        """The window manager has placed the window where the program thinks it is."""
        box = _alive(self.node.box)
        return box and tuple(box) == World.desktop.origin(self.window)

    # The hand

    def point(self, control, across=0.5, down=0.5):
        """A place on a control, as pixels of the screen; by default its middle."""
        left, top, width, height = self.table[control]
        return (self.left + round((left + width * across) / controls.TWIPS),
                self.top + round((top + height * down) / controls.TWIPS))

    def move(self, control, across=0.5, down=0.5):
        World.desktop.pointer("mousemove", *self.point(control, across, down))

    def click(self, control, across=0.5, down=0.5, button=1):
        World.desktop.pointer("mousemove", *self.point(control, across, down), "click", button)

    def double_click(self, control, across=0.5, down=0.5):
        World.desktop.pointer("mousemove", *self.point(control, across, down),
                              "click", "--repeat", 2, "--delay", 60, 1)

    def type(self, text):
        World.desktop.pointer("type", "--delay", 8, text)

    def keys(self, *names):
        World.desktop.pointer("key", "--delay", 20, *names)

    # The item list

    def item_list(self):
        return self.node.find(role="list")

    def items(self):
        """All entries of the item list, in order."""
        node = self.item_list()
        return [node.child(row).name for row in range(node.child_count())]

    def item_point(self, row):
        """Scrolls the entry into view if need be, and gives the place of its middle on the screen."""
        node = self.item_list()
        left, top, width, height = node.box()

        def place():
            x, y, w, h = node.child(row).box()
            return (x + min(w, width) // 3, y + h // 2)

        for _ in range(node.child_count()):
            x, y = place()
            if top + 4 <= y <= top + height - 4:
                return x, y
            World.desktop.pointer("mousemove", left + width // 2, top + height // 2,
                                  "click", 4 if y < top else 5)
            wait_until(lambda: place() != (x, y), "the list to scroll")
        raise AssertionError(f"entry {row} can't be scrolled into view")

    def click_item(self, row, double=False):
        World.desktop.pointer("mousemove", *self.item_point(row), "click",
                              *(["--repeat", 2, "--delay", 60] if double else []), 1)

    def start_drag(self, row):
        """Presses on an entry and waits until the drag is under way."""
        x, y = self.item_point(row)
        World.desktop.pointer("mousemove", x, y)
        before = len(World.desktop.windows(self.program.pid))
        World.desktop.pointer("mousedown", 1, "mousemove", x - 3, y + 3)
        wait_until(lambda: len(World.desktop.windows(self.program.pid)) > before, "the drag's picture")

    def drag(self, row, control):
        """Drags an entry onto a control, all the way, as a hand does."""
        self.start_drag(row)
        x, y = self.point(control)
        World.desktop.pointer("mousemove", x + 9, y + 9, "mousemove", x, y, "mouseup", 1)

    # The eye

    def key(self, index):
        """The node of a key."""
        return self.node.find(description=f"Key {index}")

    def caption(self, index):
        """A key's caption; a key without one bears its number as its name."""
        name = self.key(index).name
        return "" if name == f"Key {index}" else name

    def captions(self):
        """All keys' captions that aren't empty, by index."""
        found = {}
        for node in self.node.walk():
            about = node.description
            if about.startswith("Key ") and node.name != about:
                found[int(about[4:])] = node.name
        return found

    def wait_caption(self, index, text):
        wait_until(lambda: self.caption(index) == text, f"key {index} to read {text!r}")

    def wait_captions(self, expected):
        wait_until(lambda: _alive(self.captions) == expected, f"the keys to read {expected}")

    def button(self, caption):
        return self.node.find(name=caption)

    def colour(self, control, across=0.5, down=0.12):
        """The colour of one pixel of a control on the screen, as 0xRRGGBB."""
        x, y = self.point(control, across, down)
        raw = subprocess.run(
            ["import", "-silent", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8",
             "rgb:-"], env=World.desktop.environment, check=True, capture_output=True).stdout
        return int.from_bytes(raw[:3], "big")


class Case(unittest.TestCase):
    """A test with a shop of its own. What it started is stopped, and what it saw kept if it fails."""

    store = ()  # options for the store; None for a shop without a database

    def setUp(self):
        self._folder = tempfile.TemporaryDirectory(prefix="shop-")
        os.chmod(self._folder.name, 0o755)
        self.shop = Shop(World.build, pathlib.Path(self._folder.name) / "pos", self.store)
        self._programs = []
        self.addCleanup(self._folder.cleanup)
        self.addCleanup(self._stop)

    def _stop(self):
        outcome = self._outcome
        if outcome is not None and any(error for _, error in getattr(outcome, "errors", [])):
            self._keep()
        for program in self._programs:
            program.stop()
        World.desktop.pointer("mouseup", 1, "mousemove", 1919, 1079)

    def _keep(self):
        World.pictures.mkdir(parents=True, exist_ok=True)
        World.desktop.screenshot(str(World.pictures / f"{self.id().split('.', 1)[-1]}.png"))
        for program in self._programs:
            said = program.errors()
            if said:
                print(f"  the program said: {said.strip()}")

    def start(self, **options):
        program = Program(self.shop, **options)
        self._programs.append(program)
        return program

    def levelled(self, **options):
        """Starts the program and gives its levelled editor."""
        return Screen(self.start(**options), controls.LEVELLED_TITLE, controls.LEVELLED)

    def large(self, **options):
        return Screen(self.start(**options), controls.LARGE_TITLE, controls.LARGE)

    def message(self, program, text, title="Keystrand"):
        """Waits for a message box with just this text; gives its node."""

        def shown():
            for node in program.root().children():
                if node.name == title and node.find(role="label", name=text):
                    return node
            return None

        return wait_until(lambda: _alive(shown), f"the message {text!r}")

    def press(self, box, button):
        """Clicks a button of a message box."""
        node = wait_until(lambda: _alive(lambda: box.find(role="push button", name=button)),
                          f"the button {button!r}")
        left, top, width, height = node.box()
        World.desktop.pointer("mousemove", left + width // 2, top + height // 2, "click", 1)

    def ends_fatally(self, program, number, text):
        """The failure report comes up, and after its only button the process ends with status 1."""
        report = wait_until(lambda: _alive(lambda: self._report(program)), "the failure report")
        said = "\n".join(node.name for node in report.walk() if node.role == "label")
        self.assertIn(f"Run-time error '{number}':", said)
        self.assertIn(text, said)
        buttons = [node.name for node in report.walk() if node.role == "push button"]
        self.assertEqual(len(buttons), 1, buttons)
        self.assertTrue(program.running())
        self.press(report, buttons[0])
        self.assertEqual(program.status(), 1)
        self.assertIn(f"Run-time error '{number}': {text}", program.errors())

    @staticmethod
    def _report(program):
        for node in program.root().children():
            if node.name == "Keystrand":
                return node
        return None
