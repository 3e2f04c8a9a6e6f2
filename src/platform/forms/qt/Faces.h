#pragma once

#include <QFont>
#include <string_view>

namespace forms::qt {

/// The font for a typeface name, a size in points and a weight. A typeface that isn't installed is
/// replaced by Arial, a metric-compatible one, or what the system's font matching selects for
/// Arial. Names are looked up once; equal requests share one font.
const QFont& font(std::u16string_view face, double points, int weight);

}  // namespace forms::qt
