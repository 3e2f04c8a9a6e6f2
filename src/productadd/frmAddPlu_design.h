#pragma once

#include "platform/forms/FormDesign.h"
#include "platform/forms/GridDesign.h"
#include "shared/KeyDesign.h"

/// The design table of `frmAddPlu`: the initial properties of the sheet and its controls. Lengths
/// are in twips, those inside the grid in pixels.
namespace frmAddPlu_design {

inline constexpr forms::Colour kTransparentColour = 15790320;
inline constexpr forms::Colour kPaleAqua = 0xFFFF80;  // red 128, green 255, blue 255
inline constexpr forms::Colour kGrey = 0x808080;
inline constexpr forms::Colour kLightGrey = 0xC0C0C0;

inline constexpr forms::FormDesign kForm{.name = "frmAddPlu",
                                         .caption = u"Product Add ",
                                         .width = 9870,
                                         .height = 5910,
                                         .border = forms::BorderStyle::FixedDialog,
                                         .minimiseBox = false,
                                         .maximiseBox = false,
                                         .position = forms::StartPosition::CentreScreen};

inline constexpr forms::Design kPicture1{.name = "Picture1",
                                         .left = 0,
                                         .top = 0,
                                         .width = 9870,
                                         .height = 825,
                                         .tabIndex = 1,
                                         .backColour = forms::kWindowBackground};

inline constexpr auto kCmdSave = keydesign::command(
    "cmdSave", u"Save", {.left = 585, .top = 135, .width = 1410, .height = 510, .tabIndex = 2},
    kTransparentColour, {.x = 2487, .y = 900});
inline constexpr auto kCmdClose = keydesign::command(
    "cmdClose", u"Close", {.left = 2070, .top = 135, .width = 1410, .height = 510, .tabIndex = 3},
    kTransparentColour, {.x = 2487, .y = 900});

inline constexpr forms::Design kLblDeptId{.name = "lblDeptId",
                                          .caption = u"0",
                                          .left = 5580,
                                          .top = 225,
                                          .width = 2085,
                                          .height = 375,
                                          .tabIndex = 4,
                                          .visible = false};

inline constexpr FlexCell::GridDesign kGrid1{.control = {.name = "Grid1",
                                                         .left = 0,
                                                         .top = 810,
                                                         .width = 9870,
                                                         .height = 4245,
                                                         .tabIndex = 0,
                                                         .backColour = forms::kWindowBackground,
                                                         .foreColour = forms::kWindowText,
                                                         .font = {.points = 11.25}},
                                             .rows = 9,
                                             .cols = 3,
                                             .defaultRowHeight = 35,
                                             .extendLastCol = true,
                                             .enterKeyMoveTo = 1,
                                             .backColourActiveCell = kPaleAqua,
                                             .backColourSelection = kPaleAqua,
                                             .borderColour = kGrey,
                                             .selectionBorderColour = kLightGrey,
                                             .gridColour = kLightGrey,
                                             .boldFixedCell = false,
                                             .appearance = 0,
                                             .fixedRowColStyle = 0,
                                             .scrollBars = 0,
                                             .scrollBarStyle = 0,
                                             .multiSelect = false};

}  // namespace frmAddPlu_design
