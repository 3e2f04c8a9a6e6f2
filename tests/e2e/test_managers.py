"""A short tour under several window managers."""

import shutil

import controls
from desktop import wait_until
from harness import Case, Screen


class Tour(Case):
    store = ("--slots", "220", "--products", "40", "--free", "150,210")

    @staticmethod
    def is_minimised(screen):
        return "_NET_WM_STATE_HIDDEN" in screen.desktop.run(
            "xprop", "-id", str(screen.window), "_NET_WM_STATE")

    def tour(self, *manager):
        desktop = self.another_desktop(manager=manager)
        screen = self.levelled(desktop=desktop)

        def fills_desktop():
            title_bar = desktop.frame(screen.window)[2]
            return title_bar > 0 and desktop.is_filled_by(screen.window)

        wait_until(fills_desktop, "the editor to fill the desktop")
        desktop.double_click_title(screen.window)  # it has no other size to restore
        wait_until(fills_desktop, "the editor to fill the desktop still")
        desktop.xdotool("windowminimize", screen.window)
        wait_until(lambda: self.is_minimised(screen), "the editor to be minimised")
        desktop.xdotool("windowactivate", screen.window)
        wait_until(lambda: not self.is_minimised(screen) and fills_desktop(),
                   "the editor to fill the desktop again")
        screen.wait_alone()

        name, product = screen.items()[0]
        screen.drag(0, 62)
        screen.wait_captions({62: name})
        before = len(desktop.created)
        screen.begin_save()
        notice = desktop.created_by(screen.window, before)[0]
        states = ""
        while desktop.is_there(notice):
            states += desktop.run("xprop", "-id", str(notice), "_NET_WM_STATE", check=False)
        self.assertIn("_NET_WM_STATE_SKIP_TASKBAR", states)
        screen.wait_alone()
        self.assertIn(f"\r\n62,{product},{name},".encode(), self.shop.layout(1))

        screen.click("cmdResetAll")
        question = screen.program.window("Reset")
        wait_until(lambda: desktop.has_keyboard(question), "the keyboard of the question")
        desktop.minimise(question)
        wait_until(lambda: desktop.has_keyboard(question), "the question to have it again")
        screen.keys("Tab", "Return")
        screen.wait_alone()

        screen.double_click(12)
        sheet = Screen(screen.program, controls.SHEET_TITLE, controls.SHEET)
        desktop.minimise(sheet.window)
        sheet.await_keyboard()
        sheet.type("Quick tea")
        sheet.click("cmdSave")
        screen.wait_alone()
        screen.wait_captions({12: "Quick tea", 62: name})
        screen.click("cmdClose")
        self.assertEqual(screen.program.status(), 0)

    def test_the_tour_works_under_openbox(self):
        self.tour("openbox", "--sm-disable")

    def test_the_tour_works_under_xfwm4(self):
        self.tour("xfwm4", "--compositor=off")

    def test_the_tour_works_under_mutter(self):
        self.tour("mutter", "--x11", "--sm-disable")

    # The scripts don't install metacity: it needs too many packages for one more tour.
    if shutil.which("metacity"):
        def test_the_tour_works_under_metacity(self):
            self.tour("metacity", "--sm-disable", "--no-composite")
