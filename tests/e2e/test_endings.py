"""Invalid input and other failures: how the program ends, with the report and status 1 or silently."""

import fcntl
import os
import struct
import subprocess
import time

import controls
from desktop import wait_until
from harness import Case, Screen, Suite

TEXT_OF_ENTRY = f"{'Tonic water':30}{'':100}1042"


class BadStore(Case):
    """Each of these faults ends the program before its screen is shown, and no file has changed."""

    def ends(self, number, text):
        before = self.shop.files()
        program = self.start()
        self.ends_fatally(program, number, text)
        self.assertEqual(self.shop.files(), before)

    def test_a_file_that_is_no_database_is_fatal(self):
        self.shop.database.write_bytes(b"Dear shop, the store is closed today.\r\n" * 400)
        self.ends(-2147467259, "Unrecognized database format")

    def test_a_database_that_another_program_holds_exclusively_is_fatal_after_a_wait(self):
        with open(self.shop.database, "r+b") as held:
            lock = struct.pack("hhqqi4x", fcntl.F_WRLCK, os.SEEK_SET, 0, 0, 0)
            fcntl.fcntl(held, fcntl.F_OFD_SETLK, lock)
            began = time.monotonic()
            self.ends(-2147467259, "file already in use")
            self.assertGreater(time.monotonic() - began, 5)  # the engine waits for the other program


class NoDisplay(Case):
    def test_a_missing_display_is_reported_with_status_1(self):
        for display in (None, ":987"):
            environment = {"PATH": os.environ["PATH"], "XDG_CONFIG_HOME": str(self.shop.settings)}
            if display:
                environment["DISPLAY"] = display
            done = subprocess.run([self.shop.program], env=environment, capture_output=True,
                                  text=True, timeout=20)
            self.assertEqual(done.returncode, 1, done.stderr)
            self.assertRegex(done.stderr, "(?i)display")


class NoFont(Case):
    def test_a_missing_font_is_reported(self):
        setup = self.shop.folder / "fonts.conf"
        setup.write_text(f"<fontconfig><dir>{self.shop.posdata}</dir></fontconfig>")
        program = self.start(environment={"FONTCONFIG_FILE": str(setup)})
        wait_until(lambda: "There is no font" in program.errors(), "the message about fonts")


class StandardError(Case):
    """The report shows, and the program ends, where nothing can be written to standard error."""

    def ends(self, redirection):
        self.shop.write_settings("[comms]\nstorename=Demo\n[KEYSTRAND]\nHIDE_BARCODE=\n")
        program = self.start(command=["bash", "-c", f"exec '{self.shop.program}' {redirection}"])
        window = program.window("Keystrand")
        Suite.desktop.xdotool("windowfocus", "--sync", window, "key", "Return")
        self.assertEqual(program.status(), 1)

    def test_the_report_shows_with_standard_error_closed(self):
        self.ends("2>&-")

    def test_the_report_shows_with_standard_error_to_a_pipe_that_nobody_reads(self):
        self.ends("2> >(:)")


class LostDisplay(Case):
    """The display ends while the program runs, as at a log-out."""

    def screen(self):
        self.lost = self.another_desktop()
        return self.levelled(desktop=self.lost)

    def ends(self, screen):
        before = self.shop.files()
        self.lost.kill_server()
        self.assertEqual(screen.program.status(), 1)
        self.assertEqual(self.shop.files(), before)

    def test_a_lost_display_ends_the_idle_program_with_status_1(self):
        self.ends(self.screen())

    def test_a_lost_display_ends_the_program_during_a_drag(self):
        # The display ends between two of the toolkit's queries for the pointer's position.
        for _ in range(3):
            screen = self.screen()
            screen.start_drag(0)
            x, y = screen.point(20)
            moves = [str(word) for step in range(400) for word in ("mousemove", x + step % 40, y)]
            hand = subprocess.Popen(["xdotool", *moves], env=screen.desktop.environment,
                                    stderr=subprocess.DEVNULL)
            time.sleep(0.1)
            self.ends(screen)
            hand.wait()

    def test_a_lost_display_ends_the_program_with_the_sheet_and_its_list_open(self):
        screen = self.screen()
        screen.double_click(12)
        sheet = Screen(screen.program, controls.SHEET_TITLE, controls.SHEET)
        sheet.keys("Down", "Down", "F4")
        wait_until(lambda: len(sheet.windows()) == 3, "the departments")
        self.ends(screen)

    def test_a_lost_display_ends_the_program_with_a_message_or_the_colour_dialog_open(self):
        for button, title in (("cmdResetAll", "Reset"), ("cmdSelCol", "Colour")):
            screen = self.screen()
            screen.click(button)
            screen.program.window(title)
            self.ends(screen)


class DroppedText(Case):
    """A text that another program drops on a key."""

    def drop(self, text, key=10):
        self.screen = self.levelled()
        source = subprocess.Popen([Suite.build.program("dropsource"), text],
                                  env=Suite.desktop.environment, stdout=subprocess.PIPE)
        self.addCleanup(lambda: (source.kill(), source.wait(), source.stdout.close()))
        window = wait_until(lambda: Suite.desktop.windows(source.pid, "Drop source"),
                            "the other program")[0]
        left, top, width, height = Suite.desktop.client_area(window)
        Suite.desktop.xdotool("mousemove", left + width // 2, top + height // 2, "mousedown", 1)
        self.assertEqual(source.stdout.readline().strip(), b"dragging")
        x, y = self.screen.point(key)
        Suite.desktop.xdotool("mousemove", x - 5, y - 5, "mousemove", x, y)
        said = source.stdout.readline().strip()
        self.assertEqual(said, b"accepted")
        Suite.desktop.xdotool("mouseup", 1)
        return self.screen

    def test_an_entry_is_placed_like_one_from_the_list(self):
        screen = self.drop(TEXT_OF_ENTRY)
        screen.wait_captions({10: "Tonic water"})
        screen.click("cmdSave")
        wait_until(lambda: self.shop.layout(1), "the layout file")
        self.assertIn(b"\r\n10,1042,Tonic water,", self.shop.layout(1))

    def test_a_short_text_is_fatal(self):
        screen = self.drop("Hello")
        self.ends_fatally(screen.program, 5, "Invalid procedure call or argument")
