#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// Page 0: what the file is, its password and how its pages are encoded.
struct Header {
  /// Bytes at the start of the file that `decode` needs.
  static constexpr std::size_t kDecodedSize = 0x98;
  /// Longest password in characters.
  static constexpr std::size_t kLongestPassword = 20;
  /// The General sort order.
  static constexpr std::uint16_t kGeneral = 0x0409;
  static constexpr std::uint16_t kWindows1252 = 1252;

  Version version = Version::Jet4;
  std::uint32_t encodingKey = 0;  ///< 0: pages are plain
  std::u16string password;        ///< empty: none
  std::uint16_t codePage = kWindows1252;
  std::uint16_t sortLanguage = kGeneral;
  std::uint8_t sortVersion = 0;
  double creationDate = 0;  ///< days since 1899-12-30

  /// Decodes the start of a file; absent where it is no database of a known generation.
  static std::optional<Header> decode(ByteView front);
  /// The encoded page.
  Bytes encode() const;
};

}  // namespace jet
