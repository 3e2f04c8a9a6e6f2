"""The base of every real-window test: a shop, the program running in it, and its screens."""

import os
import pathlib
import signal
import subprocess
import tempfile
import unittest

import controls
from desktop import Desktop, wait_until
from screenreader import Gone
from shop import Shop


class Suite:
    """What all tests of one run share."""

    desktop = None  # including its message bus
    build = None  # the built programs
    pictures = None  # folder for screenshots of failing cases


class Program:
    """The program under test, started in a shop on a desktop."""

    def __init__(self, shop, desktop=None, environment=None, command=None):
        self.shop = shop
        self.desktop = desktop or Suite.desktop
        self.scale = float((environment or {}).get("QT_SCALE_FACTOR", 1))
        environment = {**self.desktop.environment, "XDG_CONFIG_HOME": str(shop.settings),
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "LC_ALL": "C.UTF-8",
                       **(environment or {})}
        self._errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen(command or [str(shop.program)], env=environment, cwd="/",
                                        stdin=subprocess.DEVNULL, stdout=self._errors,
                                        stderr=self._errors, start_new_session=True)

    @property
    def pid(self):
        return self.process.pid

    def errors(self):
        """The program's standard error (and output) so far."""
        self._errors.seek(0)
        return self._errors.read().decode("utf-8", "replace")

    def status(self):
        """The exit status, once the program has ended."""
        wait_until(lambda: not self.running(), "the program's end")
        return self.process.returncode

    def running(self):
        return self.process.poll() is None

    def stop(self):
        if self.running():
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        self._errors.close()

    def box(self, node):
        """Left, top, width and height of a node of its screens, in pixels of the display."""
        return tuple(round(value * self.scale) for value in node.box())

    def windows(self):
        """All windows that it shows now, including pop-ups and the picture of a drag."""
        return self.desktop.windows(self.pid)

    def window(self, title):
        """The window with this title, once it shows; fails if the program ends before."""

        def shown():
            found = self.desktop.windows(self.pid, title)
            if not found and not self.running():
                raise AssertionError(f"the program ended with status {self.process.returncode} "
                                     f"before its window {title!r}: {self.errors()}")
            return found

        return wait_until(shown, f"the window {title!r}")[0]

    def is_settled(self, node, window):
        """Whether the program and the window manager agree on the position of a window."""
        box = none_if_gone(lambda: self.box(node))
        return box and all(abs(one - other) <= 1
                            for one, other in zip(box, self.desktop.client_area(window)))

    def root(self):
        return wait_until(lambda: self.desktop.accessibility.program(self.pid),
                          "the program on the accessibility bus")

    def find_window(self, accept, what):
        """Waits for a window of the program for which `accept(node)` is true; returns its node."""

        def shown():
            return next((node for node in self.root().children()
                         if "showing" in node.states() and accept(node)), None)

        return wait_until(lambda: none_if_gone(shown), what)


def none_if_gone(read):
    """The result of `read()`; None if it reads a part of the screen that no longer exists."""
    try:
        return read()
    except Gone:
        return None


class Screen:
    """One of the program's windows: acts on its controls, and reads them as a screen reader does."""

    def __init__(self, program, title, table):
        self.program, self.title, self.table = program, title, table
        self.desktop = program.desktop
        self.window = program.window(title)
        self.node = program.find_window(lambda node: node.name == title, f"the screen {title!r}")
        wait_until(lambda: program.is_settled(self.node, self.window), f"{title!r} to stop moving")
        self.await_keyboard()
        self.left, self.top, self.width, self.height = self.desktop.client_area(self.window)
        self.twip = 1 / controls.TWIPS_PER_PIXEL  # in pixels of the display
        if program.scale != 1:
            self.twip = self.program.box(self.find(name="Save"))[2] / table["cmdSave"][2]

    def windows(self):
        return self.program.windows()

    def wait_alone(self):
        """Waits until the program shows nothing but this screen, and this screen has
        the keyboard focus again."""
        wait_until(lambda: len(self.windows()) == 1, "the screen to be alone")
        self.await_keyboard()

    def await_keyboard(self):
        wait_until(lambda: self.desktop.has_keyboard(self.window), "the keyboard")

    # Pointer and keyboard

    def point(self, control, across=0.5, down=0.5):
        """A point on a control, in pixels of the display; by default its centre."""
        left, top, width, height = self.table[control]
        return (self.left + round((left + width * across) * self.twip),
                self.top + round((top + height * down) * self.twip))

    def move(self, control, across=0.5, down=0.5):
        self.desktop.xdotool("mousemove", *self.point(control, across, down))

    def click(self, control, across=0.5, down=0.5, button=1):
        self.desktop.xdotool("mousemove", *self.point(control, across, down), "click", button)

    def tick(self, control):
        """Clicks a check box on its mark."""
        self.click(control, 0.03)

    def double_click(self, control, across=0.5, down=0.5):
        self.desktop.xdotool("mousemove", *self.point(control, across, down),
                          "click", "--repeat", 2, "--delay", 60, 1)

    def type(self, text):
        self.desktop.xdotool("type", "--delay", 8, text)

    def keys(self, *names):
        self.desktop.xdotool("key", "--delay", 20, *names)

    def choose(self, control, index):
        """Opens a drop-down list by the mouse, chooses an entry by the keyboard, and waits for the list to close."""
        self.click(control)
        wait_until(lambda: len(self.windows()) == 2, f"the entries of {control}")
        self.keys("Home", *["Down"] * index, "Return")
        self.wait_alone()

    def save(self, *keys):
        """Presses Save, by the mouse or by keys, and waits for the notice to show and close."""
        before = len(self.desktop.created)
        self.begin_save(*keys)
        wait_until(lambda: self._notice_gone(before), "the saved notice to close")
        self.wait_alone()

    def begin_save(self, *keys):
        """Presses Save, by the mouse or by keys, and waits for the notice. The notice shows for only 750 ms, so
        on a busy machine it may have closed when this returns."""
        before = len(self.desktop.created)
        if keys:
            self.keys(*keys)
        else:
            self.click("cmdSave")
        wait_until(lambda: self.desktop.created_by(self.window, before), "the saved notice")
        wait_until(lambda: len(self.windows()) == 2 or self._notice_gone(before),
                   "the saved notice to show")

    def _notice_gone(self, since):
        """Whether the notice has closed: the only window that a save creates, as its last step."""
        made = self.desktop.created_by(self.window, since)
        return not any(self.desktop.is_there(window) for window in made)

    # The item list

    def item_list(self):
        return self.node.find(role="list")

    def items(self):
        """All entries of the item list, in order, as description and id."""
        node = self.item_list()
        rows = (node.child(row) for row in range(node.child_count()))
        return [(row.name, row.description) for row in rows]

    def item_point(self, row):
        """Scrolls an entry into view if need be, and returns a point on it."""
        node = self.item_list()
        left, top, width, height = self.program.box(node)

        def centre():
            x, y, w, h = self.program.box(node.child(row))
            return x + min(w, width) // 3, y + h // 2

        while True:
            x, y = centre()
            if top + 4 <= y <= top + height - 4:
                return x, y
            self.desktop.xdotool("mousemove", left + width // 2, top + height // 2,
                              "click", 4 if y < top else 5)
            wait_until(lambda: centre() != (x, y), "the list to scroll")

    def double_click_item(self, row):
        self.desktop.xdotool("mousemove", *self.item_point(row),
                          "click", "--repeat", 2, "--delay", 60, 1)

    def start_drag(self, row):
        """Presses on an entry and waits until the drag is under way."""
        x, y = self.item_point(row)
        before = len(self.windows())
        self.desktop.xdotool("mousemove", x, y, "mousedown", 1, "mousemove", x - 3, y + 3)
        wait_until(lambda: len(self.windows()) > before, "the drag's picture")

    def drag(self, row, control):
        """Drags an entry onto a control."""
        self.start_drag(row)
        x, y = self.point(control)
        self.desktop.xdotool("mousemove", x + 9, y + 9, "mousemove", x, y, "mouseup", 1)
        self.wait_alone()

    # Reading

    def find(self, **what):
        return none_if_gone(lambda: self.node.find(**what))

    def key(self, index):
        """The node of a key."""
        return next((node for node in self.node.walk()
                     if node.description.startswith(f"Key {index}, ")), None)

    def captions(self):
        """The captions by key index. A key without a caption, whose name for a screen reader is its number, is
        left out."""
        found = {}
        for node in self.node.walk():
            about = node.description.split(",")[0]
            if about.startswith("Key ") and node.name != about:
                found[int(about[4:])] = node.name
        return found

    def wait_captions(self, expected):
        """Waits for these captions on the keys, and for no others."""
        try:
            wait_until(lambda: none_if_gone(self.captions) == expected, "the keys' captions", 10)
        except AssertionError:
            raise AssertionError(f"expected {expected}\n     found {self.captions()}") from None

    def colour(self, control, across=0.5, down=0.12):
        """The colour of one pixel of a control on the screen, as 0xRRGGBB."""
        return self.desktop.colour(*self.point(control, across, down))


class Case(unittest.TestCase):
    """A test with a shop of its own. Stops its programs; keeps screenshots if it fails."""

    store = ()  # options for the store

    def setUp(self):
        self._folder = tempfile.TemporaryDirectory(prefix="shop-")
        self.shop = Shop(Suite.build, pathlib.Path(self._folder.name) / "pos", self.store)
        self._programs = []
        self._desktops = []
        self.addCleanup(self._folder.cleanup)
        self.addCleanup(self._stop)

    def run(self, result=None):
        self._result = result
        return super().run(result)

    def _stop(self):
        for number, program in enumerate(self._programs):
            if any(test is self for test, _ in self._result.failures):
                self._keep(program, number)
            program.stop()
        for desktop in self._desktops:
            desktop.close()
        Suite.desktop.xdotool("mouseup", 1, "mousemove", Suite.desktop.width - 1,
                           Suite.desktop.height - 1)

    def _keep(self, program, number):
        Suite.pictures.mkdir(parents=True, exist_ok=True)
        program.desktop.screenshot(Suite.pictures / f"{self.id()}-{number}.png")
        print(f"        the program said: {program.errors().strip() or 'nothing'}")

    def another_desktop(self, **options):
        """A desktop in addition to the one that all cases share."""
        self._desktops.append(Desktop(**options))
        return self._desktops[-1]

    def start(self, **options):
        program = Program(self.shop, **options)
        self._programs.append(program)
        return program

    def levelled(self, **options):
        """Starts the program and returns its levelled editor."""
        return Screen(self.start(**options), controls.LEVELLED_TITLE, controls.LEVELLED)

    def large(self, **options):
        return Screen(self.start(**options), controls.LARGE_TITLE, controls.LARGE)

    def message(self, program, text, title="Keystrand"):
        """Waits for a message box with exactly this text; returns its node."""
        return program.find_window(lambda node: node.name == title and node.find(role="label", name=text),
                           f"the message {text!r}")

    def press(self, program, box, button):
        """Clicks a button of a message box."""
        window = program.window(box.name)
        wait_until(lambda: program.is_settled(box, window), f"{box.name!r} to stop moving")
        node = wait_until(lambda: none_if_gone(lambda: box.find(role="push button", name=button)),
                          f"the button {button!r}")
        left, top, width, height = program.box(node)
        program.desktop.xdotool("mousemove", left + width // 2, top + height // 2, "click", 1)

    def ends_fatally(self, program, number, text):
        """Checks that the failure report shows, and that after its only button the process ends with 1."""
        report = program.find_window(lambda node: node.name == "Keystrand", "the failure report")
        said = "\n".join(node.name for node in report.walk() if node.role == "label")
        self.assertIn(f"Run-time error '{number}':", said)
        self.assertIn(text, said)
        buttons = [node.name for node in report.walk() if node.role == "push button"]
        self.assertEqual(len(buttons), 1, buttons)
        self.assertTrue(program.running())
        self.press(program, report, buttons[0])
        self.assertEqual(program.status(), 1)
        self.assertIn(f"Run-time error '{number}': ", program.errors())
        self.assertIn(text, program.errors())
