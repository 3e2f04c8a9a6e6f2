#pragma once

#include <QFont>
#include <string_view>

namespace forms::qt {

/// The font of a face name. For a name that no face on the machine bears it is Arial or its metric
/// twin, else what the system's font matching has for Arial, in the size asked for. Names are
/// looked up once; equal requests share one font.
const QFont& font(std::u16string_view face, double points, int weight);

}  // namespace forms::qt
