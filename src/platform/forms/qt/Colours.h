#pragma once

#include <QColor>
#include <QPalette>

#include "platform/forms/Measures.h"

namespace forms::qt {

/// Converts a colour of the screens to a toolkit colour; system colours come from the palette.
QColor drawnColour(Colour colour, const QPalette& palette);
/// Converts a toolkit colour to a colour of the screens, 0x00BBGGRR.
Colour storedColour(const QColor& colour);

/// The colour of a text on a background. A plain colour is drawn as it is. A system colour comes
/// from the palette, unless that is hard to read and the colour's default in the light theme has
/// more contrast: in a dark theme a white key keeps dark text.
QColor textOn(Colour text, const QColor& background, const QPalette& palette);

/// The contrast of two colours, 1 (none) to 21.
double contrast(const QColor& a, const QColor& b);
/// `share` (0 to 1) of `b` mixed into `a`.
QColor mixed(const QColor& a, const QColor& b, double share);
/// Black or white, whichever has more contrast to the background.
QColor markOn(const QColor& background);

}  // namespace forms::qt
