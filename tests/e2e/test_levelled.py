"""Tours of the levelled editor: the results of typical work on the screen and on the disk."""

import os
import signal
import subprocess
import time

import controls
from desktop import wait_until
from harness import Case, Screen, Suite
from shop import BUTTON_FACE, BUTTON_TEXT, key_line, layout


class Start(Case):
    def test_the_program_folder_is_where_the_system_found_the_program(self):
        # Found on the search path, with another argv[0], and started from a deleted folder.
        script = ('mkdir "$0/gone" && cd "$0/gone" && rmdir "$0/gone" && '
                  'PATH="$0:$PATH" && exec -a "" keystrand')
        screen = self.levelled(command=["bash", "-c", script, str(self.shop.folder)])
        screen.save()
        self.assertIsNotNone(self.shop.layout(1))


class DayOfWork(Case):
    def test_products_go_onto_keys_and_into_the_layout_file(self):
        screen = self.levelled()
        entries = screen.items()
        stock = {row["id"]: row["description"] for row in self.shop.rows("tblStock")
                 if row.get("description")}
        self.assertEqual(sorted(entries), sorted((name[:30].strip(), str(id))
                                                 for id, name in stock.items()))
        self.assertEqual(screen.captions(), {})
        (tea, tea_id), (bun, bun_id), (jam, jam_id) = entries[:3]

        screen.drag(0, 20)
        screen.wait_captions({20: tea})
        screen.double_click_item(1)  # no key was clicked yet: key 0 is the current one
        screen.wait_captions({0: bun, 20: tea})
        screen.click(12)
        screen.double_click_item(2)
        screen.drag(1, 9)  # a drop leaves the current key alone
        screen.wait_captions({0: bun, 9: bun, 12: jam, 20: tea})
        screen.double_click_item(0)
        screen.wait_captions({0: bun, 9: bun, 12: tea, 20: tea})
        self.assertIsNone(self.shop.layout(1))

        screen.click("txtName")
        screen.type(" Breakfast and more ")
        wait_until(lambda: screen.find(role="text", name="Level Name").text == " Breakfast and ", "the cut level name")
        screen.save()
        default = {"back": BUTTON_FACE, "font": BUTTON_TEXT}
        saved = layout({0: {"product": bun_id, "caption": bun}, 9: {"product": bun_id, "caption": bun},
                        12: {"product": tea_id, "caption": tea},
                        20: {"product": tea_id, "caption": tea}}, **default)
        self.assertEqual(self.shop.layout(1), saved)
        touch = self.shop.posdata / "FastTouchButtons.ini"
        self.assertEqual(touch.read_bytes(), b"[SETTINGS]\r\nSCREEN1=Breakfast and\r\n")

        # Another level is blank and has no name; going back reads the file, and shows the name.
        screen.choose("cbLevel", 1)
        screen.wait_captions({})
        wait_until(lambda: screen.find(role="text", name="Level Name").text == "", "no level name")
        screen.choose("cbLevel", 0)
        screen.wait_captions({0: bun, 9: bun, 12: tea, 20: tea})
        wait_until(lambda: screen.find(role="text", name="Level Name").text == "Breakfast and", "the level name")
        self.assertEqual(self.shop.layout(1), saved)
        self.assertIsNone(self.shop.layout(2))

        # Reset: No changes nothing, Yes deletes the file and the captions, but not the ids.
        question = "This will reset all the buttons. Are you sure?"
        screen.click("cmdResetAll")
        box = self.message(screen.program, question, "Reset")
        screen.keys("Escape")  # doesn't close the question
        self.press(screen.program, box, "No")
        screen.wait_alone()
        self.assertEqual(self.shop.layout(1), saved)
        screen.click("cmdResetAll")
        self.press(screen.program, self.message(screen.program, question, "Reset"), "Yes")
        screen.wait_captions({})
        self.assertIsNone(self.shop.layout(1))
        screen.save()
        self.assertEqual(self.shop.layout(1), layout({0: {"product": bun_id}, 9: {"product": bun_id},
                                                      12: {"product": tea_id},
                                                      20: {"product": tea_id}}))
        before = self.shop.files()
        screen.drag(0, 5)
        wait_until(lambda: screen.key(5).name == tea, "key 5")
        screen.click("cmdClose")
        self.assertEqual(screen.program.status(), 0)
        self.assertEqual(self.shop.files(), before)
        self.assertEqual(screen.program.errors(), "")

    def test_nothing_done_during_the_notice_reaches_the_editor(self):
        screen = self.levelled()
        name = screen.items()[0][0]

        def pressed_under_the_notice():
            screen.click(7)
            screen.begin_save()
            screen.click(30)
            screen.keys("Escape", "Return")
            in_time = len(screen.windows()) == 2
            screen.wait_alone()
            return in_time

        wait_until(pressed_under_the_notice, "a press while the notice was up", 60)
        screen.double_click_item(0)
        screen.wait_captions({7: name})

    def test_the_tab_key_follows_the_tab_order_and_space_presses(self):
        screen = self.levelled()

        def focused():
            for node in screen.node.walk():
                if "focused" in node.states():
                    return node.name
            return None

        def reaches(what, *keys):
            if keys:
                screen.keys(*keys)
            wait_until(lambda: focused() == what, f"the focus on {what!r}")

        reaches("Key 0")
        reaches("Key 1", "Tab")
        reaches("Key 62", *["Tab"] * 61)
        for name in ("Drag an item from the list onto a button", "Button Colour", "Font Colour",
                     "Reset the Button", "Copy Button Settings", "Save", "Exit"):
            reaches(name, "Tab")
        reaches("Save", "shift+Tab")
        screen.save("space")
        self.assertEqual(self.shop.layout(1), layout({}, back=BUTTON_FACE))
        reaches("Exit", "Tab")
        for name in ("Select a department", "Autofill the blocks", "Level", "Level Name",
                     "Reset All Buttons", "Update POS", "Ignore items with barcodes", "Key 0"):
            reaches(name, "Tab")

    def test_closing_by_the_frame_ends_with_status_0_and_writes_nothing(self):
        screen = self.levelled()
        screen.drag(0, 3)
        before = self.shop.files()
        Suite.desktop.xdotool("mousemove", *Suite.desktop.close_box(screen.window), "click", 1)
        self.assertEqual(screen.program.status(), 0)
        self.assertEqual(self.shop.files(), before)

    def test_update_pos_writes_both_settings_and_starts_the_program_each_time(self):
        notes = self.shop.install_communications()
        screen = self.levelled()
        screen.drag(0, 3)
        screen.click("cmdUpdate")
        wait_until(lambda: len(notes()) == 1, "the communications program")
        screen.click("cmdUpdate", 0.2)  # at another point, so that it is no double click
        wait_until(lambda: len(notes()) == 2, "the second start")
        for note in notes():
            found = note.read_text()
            self.assertIn("UPDATE=PROGRAMDATA\n", found)
            self.assertIn("FORMTOOPEN=UPDATEPOS\n", found)
            self.assertLess(found.index("UPDATE="), found.index("FORMTOOPEN="))
            self.assertIn("arguments: 0", found)
        self.assertIsNone(self.shop.layout(1))
        self.assertTrue(screen.program.running())


class Colours(Case):
    """Colours keys by the real dialog."""

    def pick_colour(self, screen, button, html=None):
        """Opens the colour dialog and confirms the colour `html`; None cancels the dialog."""
        screen.click(button)
        dialog = screen.program.find_window(lambda node: node.name != screen.title, "the colour dialog")
        if html is None:
            screen.keys("Escape")
        else:
            box = dialog.find(role="text", name="HTML:")
            left, top, width, height = box.box()
            Suite.desktop.xdotool("mousemove", left + width // 2, top + height // 2,
                                  "click", "--repeat", 3, 1)
            screen.type(html)
            screen.keys("Return")
        screen.wait_alone()

    def test_chosen_colours_reach_the_file(self):
        self.shop.write_layout(1, layout({4: {"product": 11, "caption": "Fish & Chips"},
                                          6: {"product": 12, "caption": "<b>Bun</b>"}}))
        screen = self.levelled()
        screen.wait_captions({4: "Fish & Chips", 6: "<b>Bun</b>"})
        self.pick_colour(screen, "cmdSelCol")  # nothing confirmed yet: key 0 turns black
        screen.click(4)
        self.pick_colour(screen, "cmdSelCol", "#ff0000")
        screen.click(5)
        self.pick_colour(screen, "cmdFontColour")  # Cancel takes the colour last confirmed
        screen.click(4)
        self.pick_colour(screen, "cmdFontColour", "#ffff00")
        screen.move("cmdClose")
        wait_until(lambda: screen.colour(4) == 0xFF0000, "key 4 in red")
        screen.save()
        red, yellow = 0x0000FF, 0x00FFFF
        self.assertEqual(self.shop.layout(1), layout({
            0: {"back": 0}, 4: {"product": 11, "caption": "Fish & Chips", "back": red,
                                "font": yellow},
            5: {"font": red}, 6: {"product": 12, "caption": "<b>Bun</b>"}}))


class Autofill(Case):
    def filled(self, screen, stock, first):
        """The captions that the keys show when the rows from id `first` on fill them in order."""
        return {key: stock[first + key] for key in range(63) if stock[first + key]}

    def setUp(self):
        super().setUp()
        self.stock = {row["id"]: row.get("description") or ""
                      for row in self.shop.rows("tblStock")}

    def arranged(self, screen):
        """True if key i is in column i div 9, counted up from the bottom."""
        for key in (0, 1, 8, 9, 62):
            left, top, _, height = screen.key(key).box()
            x, y = 180 + 1350 * (key // 9), 270 + 8640 - 1080 * (key % 9)
            if (left - screen.left, top - screen.top) != (x // controls.TWIPS_PER_PIXEL, y // controls.TWIPS_PER_PIXEL):
                return False
        return True

    def test_the_stock_fills_the_keys_level_by_level_and_the_choice_is_stored_at_once(self):
        screen = self.levelled()
        screen.tick("Check1")
        screen.wait_captions(self.filled(screen, self.stock, 1))
        self.assertTrue(self.arranged(screen))
        self.assertIsNone(screen.item_list())
        self.assertEqual(self.shop.touch_buttons_setting("SETTINGS", "AUTOFILL"), "1")
        self.assertEqual(self.shop.touch_buttons_setting("SETTINGS", "ItemOne"), "BL")
        screen.choose("cbLevel", 1)
        screen.wait_captions(self.filled(screen, self.stock, 64))
        screen.save()
        self.assertEqual(self.shop.layout(2), layout(
            {key: {"product": 64 + key, "caption": self.stock[64 + key]} for key in range(63)}))
        screen.click("cmdClose")
        screen.program.status()

        # The next start opens this view, with level 1's saved layout over the stock rows.
        self.shop.write_layout(1, b"".join(
            key_line(key, 300 + key, f"From file {key}").encode() for key in range(10)))
        screen = self.levelled()
        expected = self.filled(screen, self.stock, 1)
        expected.update({key: f"From file {key}" for key in range(10)})
        screen.wait_captions(expected)
        self.assertTrue(self.arranged(screen))
        screen.tick("Check1")
        box = self.message(screen.program, "Close the app and restart it.")
        self.press(screen.program, box, "OK")
        wait_until(lambda: self.shop.touch_buttons_setting("SETTINGS", "ItemOne") == "TL", "the corner")
        self.assertEqual(self.shop.touch_buttons_setting("SETTINGS", "AUTOFILL"), "0")
        self.assertTrue(self.arranged(screen))
        self.assertIsNone(screen.item_list())


class Pointer(Case):
    def test_a_second_press_that_becomes_a_drag_places_its_item_once(self):
        screen = self.levelled()
        (tea, _), (bun, _) = screen.items()[:2]
        screen.click(5)
        x, y = screen.item_point(0)
        before = len(screen.windows())
        screen.desktop.xdotool("mousemove", x, y, "click", 1, "mousedown", 1, "mousemove", x - 3, y + 3)
        wait_until(lambda: len(screen.windows()) > before, "the drag's picture")
        x, y = screen.point(20)
        screen.desktop.xdotool("mousemove", x + 9, y + 9, "mousemove", x, y, "mouseup", 1)
        screen.wait_alone()
        screen.drag(1, 30)
        screen.wait_captions({20: tea, 30: bun})
        # The states and descriptions that a screen reader gets, and the actions that it can perform.
        self.assertIn("selected", screen.key(5).states())
        self.assertNotIn("selected", screen.key(20).states())
        self.assertRegex(screen.key(20).description, "^Key 20, row 3, column 7, colour #[0-9A-F]{6}$")
        screen.item_list().child(1).act("Press")
        screen.wait_captions({5: bun, 20: tea, 30: bun})
        screen.click(9)
        screen.keys("Right", "Down", "Return")
        wait_until(lambda: "selected" in screen.key(17).states(), "the key that the arrow keys reach")

    def test_a_held_keyboard_key_saves_once(self):
        screen = self.levelled()
        screen.save()  # the focus is on Save
        made = len(screen.desktop.created)

        def notices():
            return len(screen.desktop.created_by(screen.window, made))

        for key in ("space", "Return", "space"):
            if key == "Return":
                screen.desktop.accessibility.hear_focus()  # a screen reader begins to listen
            made = len(screen.desktop.created)
            screen.desktop.xdotool("keydown", key)
            time.sleep(1.5)  # some repeats
            self.assertEqual(notices(), 0)
            screen.desktop.xdotool("keyup", key)
            wait_until(lambda: notices() == 1, "the notice")
            # Pressed again during the notice, and held until after its end.
            screen.desktop.xdotool("keydown", key)
            in_time = screen.desktop.is_there(screen.desktop.created_by(screen.window, made)[0])
            screen.wait_alone()
            time.sleep(1.5)
            screen.desktop.xdotool("keyup", key)
            screen.wait_alone()
            if in_time:
                self.assertEqual(notices(), 1)

    def test_key_repeats_that_arrive_together_with_the_focus_and_the_release_are_no_new_press(self):
        screen = self.levelled()
        screen.save()  # the focus is on Save
        made = len(screen.desktop.created)
        other = subprocess.Popen(["xev"], env=screen.desktop.environment, stdout=subprocess.DEVNULL)
        self.addCleanup(lambda: (other.kill(), other.wait()))
        (window,) = wait_until(lambda: screen.desktop.run(
            "xdotool", "search", "--onlyvisible", "--name", "^Event Tester$", check=False).split(),
            "another program's window")
        screen.desktop.xdotool("windowactivate", screen.window)
        screen.await_keyboard()
        screen.desktop.xdotool("keydown", "Return")
        time.sleep(0.5)
        screen.desktop.xdotool("windowfocus", "--sync", window)
        time.sleep(0.5)
        os.kill(screen.program.pid, signal.SIGSTOP)
        screen.desktop.xdotool("windowfocus", screen.window)
        time.sleep(1.5)
        screen.desktop.xdotool("keyup", "Return")
        os.kill(screen.program.pid, signal.SIGCONT)
        time.sleep(0.5)
        self.assertEqual(screen.desktop.created_by(screen.window, made), [])
        # Released while another program has the keyboard: the next press is a new one.
        screen.desktop.xdotool("keydown", "Return", "windowfocus", "--sync", window,
                               "keyup", "Return", "windowfocus", "--sync", screen.window)
        screen.save("Return")

    def test_a_held_keyboard_key_that_answers_the_question_does_not_ask_it_again(self):
        screen = self.levelled()
        screen.click("cmdResetAll")
        self.message(screen.program, "This will reset all the buttons. Are you sure?", "Reset")
        wait_until(lambda: not screen.desktop.has_keyboard(screen.window), "the question to have the keyboard focus")
        screen.desktop.xdotool("keydown", "Return")
        screen.wait_alone()
        # As on a busy machine: the program finds the repeats and the release in its queue together.
        os.kill(screen.program.pid, signal.SIGSTOP)
        time.sleep(1.5)
        screen.desktop.xdotool("keyup", "Return")
        os.kill(screen.program.pid, signal.SIGCONT)
        time.sleep(0.5)
        self.assertEqual(len(screen.windows()), 1)
        screen.keys("Return")
        self.message(screen.program, "This will reset all the buttons. Are you sure?", "Reset")
