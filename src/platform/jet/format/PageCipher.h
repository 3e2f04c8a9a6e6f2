#pragma once

#include <array>
#include <cstdint>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Numbers.h"

namespace jet {

/// The stream cipher of the format: the header's mask and the encoding of pages. It is its own
/// inverse.
class Rc4 {
 public:
  explicit Rc4(ByteView key);
  /// Ciphers the bytes with the next part of the key stream.
  void apply(ByteSpan bytes);

 private:
  std::array<std::uint8_t, 256> box_{};
  std::uint8_t i_ = 0;
  std::uint8_t j_ = 0;
};

/// Encodes or decodes one page of a database with this encoding key. Page 0 never changes, and no
/// page does where the key is 0.
void cipherPage(std::uint32_t encodingKey, PageNumber page, ByteSpan bytes);

}  // namespace jet
