#pragma once

#include "keyeditor/KeyEditor.h"
#include "shared/KeyDesign.h"

/// The design table of `frmMain`: the initial properties of the form and its controls. Lengths are
/// in twips.
namespace frmMain_design {

inline constexpr std::int16_t kKeys = 63;
inline constexpr int kColumns = 7;
inline constexpr int kLevelNameLength = 15;

inline constexpr std::u16string_view kAutofillTip =
    u"Fills the buttons from the database with Item 1 starting at the bottom left and Item 9 at "
    u"the top left. Item 10 will start at the bottom again.";

/// The free layout: keys row by row from the top left. Keys 49 and 56 are 15 twips shorter than
/// the others.
constexpr MyCommandButton::ButtonDesign key(std::int16_t index) {
  const bool isShort = index == 49 || index == 56;
  return keydesign::key(index,
                        {.left = 1350 * (index % kColumns),
                         .top = 1080 * (index / kColumns),
                         .width = 1320,
                         .height = isShort ? 1035 : 1050,
                         .tabIndex = index + 1},
                        forms::kWhite, {.x = 2328, .y = isShort ? 1826 : 1852});
}

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                keydesign::Placement at) {
  at.width = 1995;
  at.height = 465;
  return keydesign::command(name, caption, at, forms::kWhite, {.x = 3519, .y = 820});
}

constexpr forms::Design label(const char* name, std::u16string_view caption,
                              keydesign::Placement at) {
  forms::Design design = keydesign::control(name, caption, at);
  design.transparent = true;
  return design;
}

constexpr forms::Design checkBox(const char* name, std::u16string_view caption,
                                 keydesign::Placement at) {
  at.width = 3300;
  at.height = 330;
  forms::Design design = keydesign::control(name, caption, at);
  design.toolTip = kAutofillTip;
  design.backColour = forms::kWhite;
  return design;
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
    .Picture1 = keydesign::box(
        "Picture1", {.left = 180, .top = 270, .width = 9510, .height = 9825, .tabIndex = 0}),
    .keyCount = kKeys,
    .key = key,
    .Grid1 = keydesign::box("Grid1", {.left = 14130,
                                      .top = 315,
                                      .width = 2715,
                                      .height = 7710,
                                      .tabIndex = 75,
                                      .visible = false}),
    .List1 = keydesign::box(
        "List1", {.left = 9945, .top = 2610, .width = 4080, .height = 4830, .tabIndex = 65}),
    .entries = {.name = {.length = 30}, .id = {.offset = 130}},
    .txtColour = keydesign::box("txtColour", {.left = 18090,
                                              .top = 8820,
                                              .width = 2535,
                                              .height = 360,
                                              .tabIndex = 71,
                                              .visible = false}),
    .txtFontColour = keydesign::box("txtFontColour", {.left = 10305,
                                                      .top = 10440,
                                                      .width = 2535,
                                                      .height = 360,
                                                      .tabIndex = 70,
                                                      .visible = false}),
    .cmdSelCol =
        command("cmdSelCol", u"Button Colour", {.left = 9945, .top = 7965, .tabIndex = 67}),
    .cmdFontColour =
        command("cmdFontColour", u"Font Colour", {.left = 9945, .top = 8460, .tabIndex = 68}),
    .cmdResetColor =
        command("cmdResetColor", u"Reset the Button", {.left = 9945, .top = 8955, .tabIndex = 69}),
    .cmdCopy =
        command("cmdCopy", u"Copy Button Settings", {.left = 12015, .top = 7965, .tabIndex = 72}),
    .cmdSave = command("cmdSave", u"Save", {.left = 12015, .top = 8460, .tabIndex = 73}),
    .cmdClose = command("cmdClose", u"Exit", {.left = 12015, .top = 9450, .tabIndex = 74}),
};

inline constexpr auto kCmdResetAll =
    command("cmdResetAll", u"Reset All Buttons", {.left = 9945, .top = 9450, .tabIndex = 83});
inline constexpr auto kCmdUpdate =
    command("cmdUpdate", u"Update POS", {.left = 12015, .top = 8955, .tabIndex = 84});

inline constexpr auto kCheck1 =
    checkBox("Check1", u"Autofill the blocks", {.left = 9945, .top = 360, .tabIndex = 78});
// Has the tool tip of `Check1`, although that describes the other box; `checkBox` sets it for both.
inline constexpr auto kChkBarcode = checkBox("chkBarcode", u"Ignore items with barcodes",
                                             {.left = 9945, .top = 7470, .tabIndex = 85});

inline constexpr auto kLblLevel = label(
    "lblLevel", u"Level", {.left = 9990, .top = 810, .width = 825, .height = 285, .tabIndex = 80});
inline constexpr auto kCbLevel = keydesign::box(
    "cbLevel", {.left = 9945, .top = 1080, .width = 1050, .height = 360, .tabIndex = 79});
inline constexpr auto kLabel5 =
    label("Label5", u"Level Name",
          {.left = 11295, .top = 810, .width = 2445, .height = 285, .tabIndex = 81});
inline constexpr auto kTxtName = keydesign::box(
    "txtName", {.left = 11250, .top = 1080, .width = 2760, .height = 360, .tabIndex = 82});
inline constexpr auto kLabel2 =
    label("Label2", u"Select a department",
          {.left = 9990, .top = 1575, .width = 3930, .height = 285, .tabIndex = 66});
inline constexpr auto kCbDept = keydesign::box(
    "cbDept", {.left = 9945, .top = 1845, .width = 4110, .height = 360, .tabIndex = 76});
inline constexpr auto kLabel1 =
    label("Label1", u"Drag an item from the list onto a button",
          {.left = 9990, .top = 2340, .width = 4065, .height = 330, .tabIndex = 64});
inline constexpr forms::Design kLabel3{.name = "Label3",
                                       .left = 13455,
                                       .top = 765,
                                       .width = 1815,
                                       .height = 420,
                                       .tabIndex = 77,
                                       .visible = false,
                                       .font = {.face = u"MS Sans Serif", .points = 8.25}};

}  // namespace frmMain_design
