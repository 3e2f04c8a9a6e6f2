#include "shared/notice/frmSaved.h"

namespace {

constexpr forms::Colour kGreen = 0x00C000;
constexpr int kIntervalMilliseconds = 750;

constexpr forms::FormDesign kForm{.name = "frmSaved",
                                  .caption = u"Form1",  // never shows: there is no title bar
                                  .width = 5775,
                                  .height = 1995,
                                  .border = forms::BorderStyle::None,
                                  .minimiseBox = false,
                                  .maximiseBox = false,
                                  .position = forms::StartPosition::CentreScreen,
                                  .inTaskBar = false,
                                  .backColour = kGreen};

// The form's own colour shows as an edge of 90 twips around the frame.
constexpr forms::Design kFrame1{.name = "Frame1",
                                .left = 90,
                                .top = 90,
                                .width = 5595,
                                .height = 1815,
                                .backColour = forms::kWhite};
constexpr forms::Design kImage1{
    .name = "Image1", .left = 4365, .top = 540, .width = 765, .height = 690};
constexpr forms::Design kLblSaved{.name = "lblSaved",
                                  .caption = u"Saved",
                                  .left = 810,
                                  .top = 630,
                                  .width = 3255,
                                  .height = 510,
                                  .backColour = 0x808080,  // never shows: the label is transparent
                                  .foreColour = 0x404040,
                                  .font = {.points = 21.75},
                                  .transparent = true};

}  // namespace

frmSaved::frmSaved()
    : Form(kForm),
      Frame1(*this, kFrame1),
      Image1(Frame1, kImage1, "tick"),
      lblSaved(Frame1, kLblSaved),
      Timer(*this, "Timer", kIntervalMilliseconds) {
  Timer.Tick = [this] { Timer_Timer(); };
}

void frmSaved::Timer_Timer() {
  Unload();
  forms::DefaultInstance<frmSaved>::drop();
}
