"""Bounds of the screens' controls in twips: left, top, width, height in the window's client area."""

TWIPS_PER_PIXEL = 15  # at scale factor 1

LEVELLED_TITLE = "Fast Item Programming 63 keys"
LARGE_TITLE = "Fast touch setup 108 keys"
SHEET_TITLE = "Product Add "


def _levelled():
    table = {
        "Picture1": (180, 270, 9510, 9825),
        "Check1": (9945, 360, 3300, 330),
        "lblLevel": (9990, 810, 825, 285),
        "cbLevel": (9945, 1080, 1050, 360),
        "txtName": (11250, 1080, 2760, 360),
        "cbDept": (9945, 1845, 4110, 360),
        "List1": (9945, 2610, 4080, 4830),
        "chkBarcode": (9945, 7470, 3300, 330),
        "cmdSelCol": (9945, 7965, 1995, 465),
        "cmdFontColour": (9945, 8460, 1995, 465),
        "cmdResetColor": (9945, 8955, 1995, 465),
        "cmdResetAll": (9945, 9450, 1995, 465),
        "cmdCopy": (12015, 7965, 1995, 465),
        "cmdSave": (12015, 8460, 1995, 465),
        "cmdUpdate": (12015, 8955, 1995, 465),
        "cmdClose": (12015, 9450, 1995, 465),
    }
    for key in range(63):
        height = 1035 if key in (49, 56) else 1050
        table[key] = (180 + 1350 * (key % 7), 270 + 1080 * (key // 7), 1320, height)
    return table


def _large():
    table = {
        "List1": (13770, 90, 5460, 7740),
        "Picture1": (90, 90, 13650, 9825),
        "cmdSelCol": (13815, 7965, 2535, 465),
        "cmdFontColour": (13815, 8505, 2535, 465),
        "cmdResetColor": (13815, 9045, 2535, 465),
        "cmdCopy": (16515, 7965, 2535, 465),
        "cmdSave": (16515, 8505, 2535, 465),
        "cmdClose": (16515, 9045, 2535, 465),
    }
    for key in range(108):
        table[key] = (90 + 1125 * (key % 12), 90 + 1080 * (key // 12), 1095, 1050)
    return table


LEVELLED = _levelled()
LARGE = _large()
SHEET = {
    "cmdSave": (585, 135, 1410, 510),
    "cmdClose": (2070, 135, 1410, 510),
    "Grid1": (0, 810, 9870, 4245),
}
