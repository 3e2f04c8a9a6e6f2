"""Invalid input and other failures: how the program ends, with the report and status 1 or silently."""

import fcntl
import os
import shutil
import struct
import subprocess

import controls
from desktop import wait_until
from harness import Case, Screen, World
from shop import key_line, layout

TEXT_OF_ENTRY = f"{'Tonic water':30}{'':100}1042"


class BadStore(Case):
    """Each ends the program before its screen is shown, with nothing changed."""

    def ends(self, number, text):
        before = self.shop.files()
        program = self.start()
        self.ends_fatally(program, number, text)
        self.assertEqual(self.shop.files(), before)

    def test_no_store_folder(self):
        self.shop.set("[comms]\nstorename=Elsewhere\n")
        self.ends(-2147467259, "is not a valid path")

    def test_no_database(self):
        self.shop.database.unlink()
        self.ends(-2147467259, "Could not find file")

    def test_not_a_database(self):
        self.shop.database.write_bytes(b"Dear shop, the store is closed today.\r\n" * 400)
        self.ends(-2147467259, "Unrecognized database format")

    def test_wrong_password(self):
        self.shop.replace_store("--password", "another")
        self.ends(-2147217843, "Not a valid password.")

    def test_a_database_that_another_program_holds_exclusively(self):
        with open(self.shop.database, "r+b") as held:
            lock = struct.pack("hhqqi4x", fcntl.F_WRLCK, os.SEEK_SET, 0, 0, 0)
            fcntl.fcntl(held, fcntl.F_OFD_SETLK, lock)
            self.ends(-2147467259, "file already in use")

    def test_barcode_setting_without_a_number(self):
        self.shop.set("[comms]\nstorename=Demo\n[KEYSTRAND]\nHIDE_BARCODE=\n")
        self.ends(13, "Type mismatch")

    def test_key_geometry_without_a_number(self):
        (self.shop.posdata / "FastTouchButtons.ini").write_bytes(
            b"[SETTINGS]\r\nAUTOFILL=yes\r\n[BUTTONS_BL]\r\nrows=nine\r\n")
        self.ends(13, "Type mismatch")

    def test_key_geometry_that_overflows(self):
        (self.shop.posdata / "FastTouchButtons.ini").write_bytes(
            b"[SETTINGS]\r\nAUTOFILL=1\r\n[BUTTONS_BL]\r\nrows=1\r\n")
        self.ends(6, "Overflow")


class ShortStock(Case):
    store = ("--slots", "200", "--products", "60", "--missing-stock", "189")

    def test_a_level_of_the_autofill_view_with_62_rows_is_fatal(self):
        (self.shop.posdata / "FastTouchButtons.ini").write_bytes(b"[SETTINGS]\r\nAUTOFILL=1\r\n")
        screen = self.levelled()
        screen.pick("cbLevel", 2)
        self.ends_fatally(screen.program, 3021, "Either BOF or EOF is True")


class BadDepartment(Case):
    store = ("--department", "1=Bar", "--department", "2=Chef's choice", "--department", "3=Deli")

    def test_an_apostrophe_in_a_department_breaks_the_statement(self):
        screen = self.levelled()
        before = self.shop.files()
        screen.pick("cbDept", 1)
        self.ends_fatally(screen.program, -2147217900, "Syntax error")
        self.assertEqual(self.shop.files(), before)


class BadLayout(Case):
    """The levelled editor reads as far as it can and says nothing."""

    def shown(self, data):
        self.shop.write_layout(1, data)
        screen = self.levelled()
        found = screen.captions()
        self.assertEqual(self.shop.layout(1), data)
        self.assertEqual(screen.program.errors(), "")
        screen.click("cmdSave")
        wait_until(lambda: self.shop.layout(1) != data, "the layout to be saved")
        screen.alone()
        return found, self.shop.layout(1).decode("cp1252").split("\r\n")

    def test_a_truncated_file_keeps_its_complete_lines(self):
        lines = [key_line(key, 100 + key, f"Item {key}") for key in range(63)]
        captions, saved = self.shown("".join(lines[:10]).encode() + b"10,110,Item 10,167")
        self.assertEqual(captions, {key: f"Item {key}" for key in range(11)})
        self.assertEqual(saved[9], lines[9].strip())
        self.assertEqual(saved[10].split(",")[:4], ["10", "", "Item 10", "167"])

    def test_a_line_with_4_fields_stops_the_reading_after_its_back_colour(self):
        lines = [key_line(key, 100 + key, f"Item {key}") for key in range(63)]
        lines[29] = "29,129,Item 29,255\r\n"
        captions, saved = self.shown("".join(lines).encode())
        self.assertEqual(captions, {key: f"Item {key}" for key in range(30)})
        self.assertEqual(saved[28], lines[28].strip())
        self.assertEqual(saved[29].split(",")[:4], ["29", "", "Item 29", "255"])
        self.assertEqual(saved[30].split(",")[:3], ["30", "", ""])


class Posdata(Case):
    """A folder that is missing, or that the user may read but not write."""

    NOBODY = 65534

    def test_saving_without_the_folder_is_fatal(self):
        shutil.rmtree(self.shop.posdata)
        screen = self.levelled()
        screen.click("cmdSave")
        self.ends_fatally(screen.program, 76, "Path not found")
        self.assertFalse(self.shop.posdata.exists())

    def unwritable(self):
        """The editor on a shop with a layout, as a user who may not write into its Posdata."""
        self.shop.write_layout(1, layout({2: {"product": 5, "caption": "Tea"}}))
        self.addCleanup(os.chmod, self.shop.posdata, 0o755)
        (self.shop.posdata / "FastMovers1.txt").chmod(0o444)
        os.chmod(self.shop.posdata, 0o555)
        options = {}
        if os.geteuid() == 0:
            options["user"] = self.NOBODY
            for path in (self.shop.folder, *self.shop.settings.rglob("*")):
                os.chown(path, self.NOBODY, self.NOBODY)
        # Another user's program isn't on this user's accessibility bus.
        return Screen(self.start(**options), controls.LEVELLED_TITLE, controls.LEVELLED, seen=False)

    def ends_unseen(self, program, *numbers):
        """The same as ends_fatally, but checked by standard error."""
        wait_until(lambda: any(f"Run-time error '{number}': " in program.errors()
                               for number in numbers), "the report")
        window = program.window("Keystrand")
        World.desktop.xdotool("windowfocus", "--sync", window, "key", "Return")
        self.assertEqual(program.status(), 1)

    def test_saving_is_fatal_and_the_old_layout_stays(self):
        screen = self.unwritable()
        before = self.shop.files()
        screen.click("cmdSave")
        self.ends_unseen(screen.program, 70, 75)
        self.assertEqual(self.shop.files(), before)

    def test_resetting_is_fatal_and_the_old_layout_stays(self):
        screen = self.unwritable()
        before = self.shop.files()
        screen.click("cmdResetAll")
        window = screen.program.window("Reset")
        World.desktop.xdotool("windowfocus", "--sync", window, "key", "Return")
        self.ends_unseen(screen.program, 70, 75)
        self.assertEqual(self.shop.files(), before)


class NoDisplay(Case):
    def test_it_says_so_and_ends_with_status_1(self):
        for display in (None, ":987"):
            environment = {"PATH": os.environ["PATH"], "XDG_CONFIG_HOME": str(self.shop.settings)}
            if display:
                environment["DISPLAY"] = display
            done = subprocess.run([self.shop.program], env=environment, capture_output=True,
                                  text=True, timeout=20)
            self.assertEqual(done.returncode, 1, done.stderr)
            self.assertRegex(done.stderr, "(?i)display")


class NoFont(Case):
    def test_it_says_so(self):
        setup = self.shop.folder / "fonts.conf"
        setup.write_text(f"<fontconfig><dir>{self.shop.posdata}</dir></fontconfig>")
        program = self.start(environment={"FONTCONFIG_FILE": str(setup)})
        wait_until(lambda: "There is no font" in program.errors(), "the message about fonts")


class StandardError(Case):
    """The report shows, and the program ends, where nothing can be written to standard error."""

    def ends(self, redirection):
        self.shop.set("[comms]\nstorename=Demo\n[KEYSTRAND]\nHIDE_BARCODE=\n")
        program = self.start(command=["bash", "-c", f"exec '{self.shop.program}' {redirection}"])
        window = program.window("Keystrand")
        World.desktop.xdotool("windowfocus", "--sync", window, "key", "Return")
        self.assertEqual(program.status(), 1)

    def test_it_is_closed(self):
        self.ends("2>&-")

    def test_a_pipe_without_a_reader(self):
        self.ends("2> >(:)")


class LostDisplay(Case):
    """The display ends while the program runs, as at a log-out."""

    def screen(self):
        self.lost = self.another_desktop()
        return self.levelled(desktop=self.lost)

    def ends(self, screen):
        before = self.shop.files()
        self.lost.lose()
        self.assertEqual(screen.program.status(), 1)
        self.assertEqual(self.shop.files(), before)

    def test_while_nothing_happens(self):
        self.ends(self.screen())

    def test_while_an_item_is_dragged(self):
        screen = self.screen()
        screen.start_drag(0)
        screen.move(20)
        self.ends(screen)

    def test_under_the_sheet_and_its_list(self):
        screen = self.screen()
        screen.double_click(12)
        sheet = Screen(screen.program, controls.SHEET_TITLE, controls.SHEET)
        sheet.keys("Down", "Down", "F4")
        wait_until(lambda: len(sheet.windows()) == 3, "the departments")
        self.ends(screen)

    def test_under_a_message_and_the_colour_dialog(self):
        for button, title in (("cmdResetAll", "Reset"), ("cmdSelCol", "Colour")):
            screen = self.screen()
            screen.click(button)
            screen.program.window(title)
            self.ends(screen)


class DroppedText(Case):
    """A text that another program drops on a key."""

    def drop(self, text, key=10):
        self.screen = self.levelled()
        source = subprocess.Popen([World.build.program("dropsource"), text],
                                  env=World.desktop.environment, stdout=subprocess.PIPE)
        self.addCleanup(lambda: (source.kill(), source.wait(), source.stdout.close()))
        window = wait_until(lambda: World.desktop.windows(source.pid, "Drop source"),
                            "the other program")[0]
        left, top, width, height = World.desktop.origin(window)
        World.desktop.xdotool("mousemove", left + width // 2, top + height // 2, "mousedown", 1)
        self.assertEqual(source.stdout.readline().strip(), b"dragging")
        x, y = self.screen.point(key)
        World.desktop.xdotool("mousemove", x - 5, y - 5, "mousemove", x, y)
        said = source.stdout.readline().strip()
        self.assertEqual(said, b"accepted")
        World.desktop.xdotool("mouseup", 1)
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

    def test_no_number_after_the_text_is_fatal(self):
        screen = self.drop(f"{'Tonic water':130}tonic")
        self.ends_fatally(screen.program, 13, "Type mismatch")

    def test_a_number_beyond_16_bits_is_fatal(self):
        screen = self.drop(f"{'Tonic water':130}32768")
        self.ends_fatally(screen.program, 6, "Overflow")


class NothingSelected(Case):
    def test_a_double_click_in_the_empty_part_of_the_list_is_fatal(self):
        self.shop.replace_store("--products", "2")
        screen = self.levelled()
        wait_until(lambda: len(screen.items()) == 2, "two products")
        screen.double_click("List1", 0.5, 0.9)
        self.ends_fatally(screen.program, 5, "Invalid procedure call or argument")


class NoCommunications(Case):
    def test_the_settings_are_written_and_then_it_is_fatal(self):
        screen = self.levelled()
        screen.click("cmdUpdate")
        self.ends_fatally(screen.program, 53, "File not found")
        self.assertEqual(self.shop.setting("COMMS", "UPDATE"), "PROGRAMDATA")
        self.assertEqual(self.shop.setting("COMMS", "FORMTOOPEN"), "UPDATEPOS")
