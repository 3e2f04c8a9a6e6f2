#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace forms::qt {

/// Convert UTF-16 text to and from the toolkit's strings; unpaired surrogates are kept.
inline QString toQt(std::u16string_view text) {
  return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

inline std::u16string fromQt(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace forms::qt
