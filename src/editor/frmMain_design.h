#pragma once

#include "keyeditor/KeyEditor.h"
#include "shared/KeyDesign.h"

/// The table of `frmMain`: what the screen stores for itself and its controls, in twips.
namespace frmMain_design {

inline constexpr std::int16_t kKeys = 63;
inline constexpr int kColumns = 7;
inline constexpr int kLevelNameLength = 15;

inline constexpr std::u16string_view kAutofillTip =
    u"Fills the buttons from the database with Item 1 starting at the bottom left and Item 9 at "
    u"the top left. Item 10 will start at the bottom again.";

/// The design grid, row by row from the top left. Keys 49 and 56 are 15 twips lower than the
/// others.
constexpr MyCommandButton::ButtonDesign key(std::int16_t index) {
  const bool low = index == 49 || index == 56;
  return keydesign::key(
      index, {1350 * (index % kColumns), 1080 * (index / kColumns), 1320, low ? 1035 : 1050},
      index + 1, forms::kWhite, {2328, low ? 1826 : 1852});
}

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                int left, int top, int tabIndex) {
  return keydesign::command(name, caption, {left, top, 1995, 465}, tabIndex, forms::kWhite,
                            {3519, 820});
}

constexpr forms::Design label(const char* name, std::u16string_view caption, int left, int top,
                              int width, int height, int tabIndex) {
  return {.name = name,
          .caption = caption,
          .left = left,
          .top = top,
          .width = width,
          .height = height,
          .tabIndex = tabIndex,
          .transparent = true};
}

constexpr forms::Design tickBox(const char* name, std::u16string_view caption, int left, int top,
                                int tabIndex) {
  return {.name = name,
          .caption = caption,
          .left = left,
          .top = top,
          .width = 3300,
          .height = 330,
          .tabIndex = tabIndex,
          .toolTip = kAutofillTip,
          .backColour = forms::kWhite};
}

inline constexpr KeyEditorDesign kCommon{
    .form = {.name = "frmMain",
             .caption = u"Fast Item Programming 63 keys",
             .width = 13350,
             .height = 8385,
             .border = forms::BorderStyle::FixedSingle,
             .maximiseBox = false,
             .startMaximised = true,
             .backColour = forms::kWindowBackground},
    .Picture1 = keydesign::box("Picture1", 180, 270, 9510, 9825, 0),
    .keyCount = kKeys,
    .key = key,
    .Grid1 = keydesign::box("Grid1", 14130, 315, 2715, 7710, 75, false),
    .List1 = keydesign::box("List1", 9945, 2610, 4080, 4830, 65),
    .entries = {.name = {.length = 30}, .id = {.offset = 130}},
    .txtColour = keydesign::box("txtColour", 18090, 8820, 2535, 360, 71, false),
    .txtFontColour = keydesign::box("txtFontColour", 10305, 10440, 2535, 360, 70, false),
    .cmdSelCol = command("cmdSelCol", u"Button Colour", 9945, 7965, 67),
    .cmdFontColour = command("cmdFontColour", u"Font Colour", 9945, 8460, 68),
    .cmdResetColor = command("cmdResetColor", u"Reset the Button", 9945, 8955, 69),
    .cmdCopy = command("cmdCopy", u"Copy Button Settings", 12015, 7965, 72),
    .cmdSave = command("cmdSave", u"Save", 12015, 8460, 73),
    .cmdClose = command("cmdClose", u"Exit", 12015, 9450, 74),
};

inline constexpr auto kCmdResetAll = command("cmdResetAll", u"Reset All Buttons", 9945, 9450, 83);
inline constexpr auto kCmdUpdate = command("cmdUpdate", u"Update POS", 12015, 8955, 84);

inline constexpr auto kCheck1 = tickBox("Check1", u"Autofill the blocks", 9945, 360, 78);
// Its tip speaks of the other box's subject.
inline constexpr auto kChkBarcode =
    tickBox("chkBarcode", u"Ignore items with barcodes", 9945, 7470, 85);

inline constexpr auto kLblLevel = label("lblLevel", u"Level", 9990, 810, 825, 285, 80);
inline constexpr auto kCbLevel = keydesign::box("cbLevel", 9945, 1080, 1050, 360, 79);
inline constexpr auto kLabel5 = label("Label5", u"Level Name", 11295, 810, 2445, 285, 81);
inline constexpr auto kTxtName = keydesign::box("txtName", 11250, 1080, 2760, 360, 82);
inline constexpr auto kLabel2 = label("Label2", u"Select a department", 9990, 1575, 3930, 285, 66);
inline constexpr auto kCbDept = keydesign::box("cbDept", 9945, 1845, 4110, 360, 76);
inline constexpr auto kLabel1 =
    label("Label1", u"Drag an item from the list onto a button", 9990, 2340, 4065, 330, 64);
inline constexpr forms::Design kLabel3{.name = "Label3",
                                       .left = 13455,
                                       .top = 765,
                                       .width = 1815,
                                       .height = 420,
                                       .tabIndex = 77,
                                       .visible = false,
                                       .font = {.face = u"MS Sans Serif", .points = 8.25}};

}  // namespace frmMain_design
