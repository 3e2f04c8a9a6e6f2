#pragma once

#include "keyeditor/KeyEditor.h"
#include "shared/KeyDesign.h"

/// The design table of `frmMainBig`: the initial properties of the form and its controls. Lengths
/// are in twips.
namespace frmMainBig_design {

inline constexpr std::int16_t kKeys = 108;
inline constexpr int kColumns = 12;
inline constexpr forms::Colour kTransparentColour = 15790320;

/// In the tab order the six command buttons (68 to 73) stand between keys 62 and 63.
constexpr int keyTabIndex(std::int16_t index) {
  return index <= 62 ? 5 + index : 11 + index;
}

constexpr MyCommandButton::ButtonDesign key(std::int16_t index) {
  return keydesign::key(index,
                        {.left = 1125 * (index % kColumns),
                         .top = 1080 * (index / kColumns),
                         .width = 1095,
                         .height = 1050,
                         .tabIndex = keyTabIndex(index)},
                        kTransparentColour, {.x = 1931, .y = 1852});
}

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                keydesign::Placement at) {
  at.width = 2535;
  at.height = 465;
  return keydesign::command(name, caption, at, kTransparentColour, {.x = 4471, .y = 820});
}

inline constexpr KeyEditorDesign kCommon{
    .form = {.name = "frmMainBig",
             .caption = u"Fast touch setup 108 keys",
             .width = 4560,
             .height = 3030,
             .startMaximised = true,
             .restoredAt = forms::Offset{120, 450}},
    .Picture1 = keydesign::box(
        "Picture1", {.left = 90, .top = 90, .width = 13650, .height = 9825, .tabIndex = 4}),
    .keyCount = kKeys,
    .key = key,
    .Grid1 = keydesign::box("Grid1", {.left = 18135,
                                      .top = 225,
                                      .width = 2715,
                                      .height = 7710,
                                      .tabIndex = 0,
                                      .visible = false}),
    .List1 = keydesign::box(
        "List1", {.left = 13770, .top = 90, .width = 5460, .height = 7740, .tabIndex = 3}),
    .entries = {.name = {.offset = 10}, .id = {.length = 10}},
    .txtColour = keydesign::box("txtColour", {.left = 13860,
                                              .top = 9585,
                                              .width = 2535,
                                              .height = 360,
                                              .tabIndex = 1,
                                              .visible = false}),
    .txtFontColour = keydesign::box("txtFontColour", {.left = 9990,
                                                      .top = 10170,
                                                      .width = 2535,
                                                      .height = 360,
                                                      .tabIndex = 2,
                                                      .visible = false}),
    .cmdSelCol =
        command("cmdSelCol", u"Button Colour", {.left = 13815, .top = 7965, .tabIndex = 68}),
    .cmdFontColour =
        command("cmdFontColour", u"Font Colour", {.left = 13815, .top = 8505, .tabIndex = 69}),
    .cmdResetColor = command("cmdResetColor", u"Reset Button Colour",
                             {.left = 13815, .top = 9045, .tabIndex = 70}),
    .cmdCopy =
        command("cmdCopy", u"Copy Button Settings", {.left = 16515, .top = 7965, .tabIndex = 71}),
    .cmdSave = command("cmdSave", u"Save", {.left = 16515, .top = 8505, .tabIndex = 72}),
    .cmdClose = command("cmdClose", u"Exit", {.left = 16515, .top = 9045, .tabIndex = 73}),
};

}  // namespace frmMainBig_design
