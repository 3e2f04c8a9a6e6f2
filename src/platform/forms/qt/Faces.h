#pragma once

#include <QFont>
#include <string_view>

namespace forms::qt {

/// The font with a face name, a size in points and a weight. Where no face on the machine has the
/// name it is Arial or a face with the same metrics, else the system's font matching for Arial.
/// Names are looked up once; equal requests share one font.
const QFont& font(std::u16string_view face, double points, int weight);

}  // namespace forms::qt
