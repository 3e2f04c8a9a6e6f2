"""Tours of the large editor."""

import controls
from desktop import wait_until
from harness import Case
from shop import BUTTON_FACE, layout


class Large(Case):
    def setUp(self):
        super().setUp()
        # Only exactly "0" means the levelled editor.
        (self.shop.posdata / "POSCONFIG.INI").write_bytes(
            b"[General]\r\nload_fastmovers_large=00\r\n")


class Tour(Large):
    def test_products_go_onto_keys_and_into_the_one_layout_file(self):
        screen = self.large()
        entries = screen.items()
        stock = {row["id"]: row["description"] for row in self.shop.rows("tblStock")
                 if row.get("description")}
        self.assertEqual(sorted(entries), sorted((name.strip(), str(id)) for id, name in stock.items()))
        (tea, tea_id), (bun, bun_id), (jam, jam_id) = entries[:3]
        self.assertEqual(screen.captions(), {})

        screen.drag(0, 107)
        screen.wait_captions({107: tea})
        screen.click(40)
        screen.double_click_item(1)
        screen.drag(2, 12)
        screen.wait_captions({12: jam, 40: bun, 107: tea})
        screen.double_click(41)  # counts as a click here: no sheet opens
        screen.double_click_item(0)
        screen.wait_captions({12: jam, 40: bun, 41: tea, 107: tea})
        self.assertIsNone(self.shop.layout(""))
        screen.save()
        saved = layout({12: {"product": jam_id, "caption": jam}, 40: {"product": bun_id, "caption": bun},
                        41: {"product": tea_id, "caption": tea},
                        107: {"product": tea_id, "caption": tea}}, 108, back=BUTTON_FACE)
        self.assertEqual(self.shop.layout(""), saved)
        self.assertFalse((self.shop.posdata / "FastTouchButtons.ini").exists())
        screen.drag(0, 0)
        screen.click("cmdClose")
        self.assertEqual(screen.program.status(), 0)
        self.assertEqual(self.shop.layout(""), saved)
        self.assertEqual(screen.program.errors(), "")


class Restored(Large):
    def test_the_restored_screen_has_the_bounds_of_its_design(self):
        screen = self.large()
        screen.desktop.double_click_title(screen.window)
        wait_until(lambda: screen.desktop.client_area(screen.window) == (8, 30, 304, 202),
                   "the bounds of the design")
        screen.desktop.double_click_title(screen.window)
        wait_until(lambda: screen.desktop.client_area(screen.window)[2] == screen.desktop.width,
                   "the full width")


class NoWindowManager(Large):
    def test_the_screen_fills_the_display_without_a_window_manager(self):
        bare = self.another_desktop(manager=None)
        for scale in ("1.25", "1"):
            program = self.start(desktop=bare, environment={"QT_SCALE_FACTOR": scale})
            window = program.window(controls.LARGE_TITLE)
            wait_until(lambda: bare.client_area(window) == (0, 0, bare.width, bare.height),
                       f"the full display at the scale factor {scale}")
        left, top, width, height = (value // controls.TWIPS_PER_PIXEL for value in controls.LARGE["cmdClose"])
        bare.xdotool("mousemove", left + width // 2, top + height // 2, "click", 1)
        self.assertEqual(program.status(), 0)
