"""Tours of the sheet for a new product, checked by an independent reader of the store."""

import controls
from desktop import wait_until
from harness import Case, Screen, none_if_gone
from shop import BUTTON_FACE, layout

FREE = (150, 210)


class ProductCase(Case):
    store = ("--slots", "220", "--products", "40", "--free", ",".join(map(str, FREE)))

    def sheet(self, editor, key):
        """Double-clicks a key; returns the sheet that opens."""
        editor.double_click(key)
        return Screen(editor.program, controls.SHEET_TITLE, controls.SHEET)

    def value(self, sheet, row):
        """A point on a row's value cell, as shares of the grid's width and height."""
        return 0.7, (row - 0.5) * 35 * controls.TWIPS_PER_PIXEL / controls.SHEET["Grid1"][3]

    def row(self, table, id):
        (found,) = (row for row in self.shop.rows(table) if row["id"] == id)
        return found


class Tour(ProductCase):
    def test_a_product_fills_the_lowest_free_slot_and_is_placed_on_the_key(self):
        before = {table: self.shop.rows(table) for table in ("tblStock", "tblPlu", "tblDepartment")}
        editor = self.levelled()
        sheet = self.sheet(editor, 12)
        sheet.type("  Chef's jam, homemade  ")
        sheet.keys("Return")
        sheet.type("2.50abc")
        sheet.click("Grid1", *self.value(sheet, 3))
        self.pick_department(sheet, 1)
        sheet.click("Grid1", *self.value(sheet, 4))  # print on printer 1
        sheet.click("Grid1", 0.2, self.value(sheet, 5)[1])  # a click on a label ticks nothing
        sheet.click("Grid1", *self.value(sheet, 7))  # an instruction item
        sheet.click("cmdSave")
        editor.wait_alone()
        editor.wait_captions({12: "Chef's jam, homemade"})

        added = self.row("tblStock", FREE[0])
        self.assertEqual(added["description"], "Chef's jam, homemade")
        self.assertEqual(float(added["price"]), 2.5)
        names = sorted(row["description"] for row in before["tblDepartment"])
        (department,) = (row["id"] for row in before["tblDepartment"]
                         if row["description"] == names[1])
        self.assertEqual(int(added["deptid"]), department)
        flags = self.row("tblPlu", FREE[0])
        self.assertEqual([int(flags[name]) for name in
                          ("PRINTER1", "PRINTER2", "OPEN_PLU", "ITEM_TYPE", "NEG_PRICE")],
                         [1, 0, 0, 1, 0])
        for table in ("tblStock", "tblPlu"):
            self.assertEqual([row for row in self.shop.rows(table) if row["id"] != FREE[0]],
                             [row for row in before[table] if row["id"] != FREE[0]])

        editor.save()
        product = {"product": FREE[0], "caption": "Chef's jam, homemade"}
        self.assertEqual(self.shop.layout(1), layout({12: product}, back=BUTTON_FACE))

        # The list contains it from the next change of the filter on.
        entry = (product["caption"], str(FREE[0]))
        self.assertNotIn(entry, editor.items())
        editor.tick("chkBarcode")
        wait_until(lambda: entry in editor.items(), "the new product in the list")
        self.assertEqual(editor.program.errors(), "")

    def pick_department(self, sheet, index):
        wait_until(lambda: len(sheet.windows()) == 3, "the departments")
        sheet.keys("Home", *["Down"] * index, "Return")
        wait_until(lambda: len(sheet.windows()) == 2, "the departments to close")

    def test_screen_readers_learn_that_the_cell_has_the_focus_after_its_list_closes(self):
        names = sorted(row["description"] for row in self.shop.rows("tblDepartment"))
        sheet = self.sheet(self.levelled(), 12)
        sheet.click("Grid1", *self.value(sheet, 3))
        focused = sheet.desktop.accessibility.hear_focus()
        self.pick_department(sheet, 1)
        cell = f"Department Link: {names[1]}"
        wait_until(lambda: focused() and none_if_gone(lambda: focused()[-1].name) == cell,
                   "readers to be told that the cell has the focus")

    def test_the_sheet_stays_above_the_editor_that_it_blocks(self):
        editor = self.levelled()
        sheet = self.sheet(editor, 3)
        sheet.desktop.minimise(sheet.window)
        editor.desktop.xdotool("windowactivate", editor.window)
        wait_until(lambda: len(editor.windows()) == 2, "the sheet to come back with the editor")
        editor.click(0)  # blocked, and the sheet stays above it
        sheet.click("Grid1", *self.value(sheet, 1))
        sheet.await_keyboard()
        sheet.type("Back again")
        sheet.click("cmdSave")
        editor.wait_alone()
        editor.wait_captions({3: "Back again"})


class Refused(ProductCase):
    store = (*ProductCase.store, "--no-zero-length", "--department", "1=Bar",
             "--department", "2=Chef's choice")

    def test_a_name_that_the_database_refuses_is_fatal_and_nothing_is_written(self):
        before = self.shop.rows("tblStock"), self.shop.rows("tblPlu")
        editor = self.levelled()
        self.sheet(editor, 2).click("cmdSave")
        self.ends_fatally(editor.program, -2147467259, "zero-length string")
        self.assertEqual((self.shop.rows("tblStock"), self.shop.rows("tblPlu")), before)

    def test_an_apostrophe_in_the_picked_department_is_fatal(self):
        editor = self.levelled()
        sheet = self.sheet(editor, 2)
        sheet.click("Grid1", *self.value(sheet, 3))
        wait_until(lambda: len(sheet.windows()) == 3, "the departments")
        sheet.keys("End", "Return")
        self.ends_fatally(editor.program, -2147217900, "Syntax error")

    def test_a_program_that_shows_its_report_lets_others_add(self):
        editor, other = self.levelled(), self.levelled(desktop=self.another_desktop())
        sheet = self.sheet(editor, 2)
        sheet.click("Grid1", *self.value(sheet, 3))
        wait_until(lambda: len(sheet.windows()) == 3, "the departments")
        sheet.keys("End", "Return")
        wait_until(editor.program.errors, "the report")
        sheet = self.sheet(other, 2)
        sheet.type("Meanwhile")
        sheet.click("cmdSave")
        other.wait_alone()
        other.wait_captions({2: "Meanwhile"})
        self.assertEqual(self.row("tblStock", FREE[0])["description"], "Meanwhile")
        self.ends_fatally(editor.program, -2147217900, "Syntax error")
