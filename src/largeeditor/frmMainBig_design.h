#pragma once

#include "keyeditor/KeyEditor.h"
#include "shared/KeyDesign.h"

/// The table of `frmMainBig`: what the screen stores for itself and its controls, in twips.
namespace frmMainBig_design {

inline constexpr std::int16_t kKeys = 108;
inline constexpr int kColumns = 12;
inline constexpr forms::Colour kTransparent = 15790320;

/// The tab order leaves the keys after key 62, runs through the six command buttons and comes back.
constexpr int keyTabIndex(std::int16_t index) {
  return index <= 62 ? 5 + index : 11 + index;
}

constexpr MyCommandButton::ButtonDesign key(std::int16_t index) {
  return keydesign::key(index, {1125 * (index % kColumns), 1080 * (index / kColumns), 1095, 1050},
                        keyTabIndex(index), kTransparent, {1931, 1852});
}

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                int left, int top, int tabIndex) {
  return keydesign::command(name, caption, {left, top, 2535, 465}, tabIndex, kTransparent,
                            {4471, 820});
}

inline constexpr KeyEditorDesign kCommon{
    .form = {.name = "frmMainBig",
             .caption = u"Fast touch setup 108 keys",
             .width = 4560,
             .height = 3030,
             .startMaximised = true,
             .restoredAt = forms::Offset{120, 450}},
    .Picture1 = keydesign::box("Picture1", 90, 90, 13650, 9825, 4, true),
    .keyCount = kKeys,
    .key = key,
    .Grid1 = keydesign::box("Grid1", 18135, 225, 2715, 7710, 0, false),
    .List1 = keydesign::box("List1", 13770, 90, 5460, 7740, 3, true),
    .entries = {.name = {.offset = 10}, .id = {.length = 10}},
    .txtColour = keydesign::box("txtColour", 13860, 9585, 2535, 360, 1, false),
    .txtFontColour = keydesign::box("txtFontColour", 9990, 10170, 2535, 360, 2, false),
    .cmdSelCol = command("cmdSelCol", u"Button Colour", 13815, 7965, 68),
    .cmdFontColour = command("cmdFontColour", u"Font Colour", 13815, 8505, 69),
    .cmdResetColor = command("cmdResetColor", u"Reset Button Colour", 13815, 9045, 70),
    .cmdCopy = command("cmdCopy", u"Copy Button Settings", 16515, 7965, 71),
    .cmdSave = command("cmdSave", u"Save", 16515, 8505, 72),
    .cmdClose = command("cmdClose", u"Exit", 16515, 9045, 73),
};

}  // namespace frmMainBig_design
