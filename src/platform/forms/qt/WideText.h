#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace forms::qt {

/// Converts wide text to the toolkit's text and back, unit by unit.
inline QString toQt(std::u16string_view text) {
  return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

inline std::u16string fromQt(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace forms::qt
