#pragma once

#include "platform/forms/Measures.h"

namespace FlexCell {

/// The initial properties of a grid. Row heights and column widths are in pixels of 15 twips.
struct GridDesign {
  forms::Design control{};
  int rows = 0;
  int cols = 0;
  int defaultRowHeight = 20;
  bool extendLastCol = false;
  int enterKeyMoveTo = 0;  ///< 1: Enter goes one row down
  forms::Colour backColourActiveCell = forms::kWhite;
  forms::Colour backColourSelection = forms::kWhite;
  forms::Colour borderColour = forms::kBlack;
  forms::Colour selectionBorderColour = forms::kBlack;
  forms::Colour gridColour = forms::kBlack;
  // Without effect: the grid has only one appearance.
  bool boldFixedCell = true;
  int appearance = 1;        ///< 0: flat
  int fixedRowColStyle = 1;  ///< 0: flat
  int scrollBars = 3;        ///< 0: none
  int scrollBarStyle = 1;    ///< 0: flat
  bool multiSelect = true;   ///< false: one cell at a time
};

}  // namespace FlexCell
