#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/RowPointer.h"

namespace jet {

/// What a row holds of a memo or OLE value: twelve bytes, and the value itself where it is short.
struct LongValueHead {
  // Offsets in the bytes that the row holds.
  static constexpr std::size_t kLength = 0;  ///< u32: length in bytes, and the form in the top bits
  static constexpr std::size_t kFirst = 4;  ///< u32: row pointer of the first piece; then 4 bytes 0
  static constexpr std::size_t kSize = 12;  ///< where an inline value begins
  /// Offset in a piece of a chain, before its part of the value.
  static constexpr std::size_t kNextPiece =
      0;  ///< u32: row pointer of the next piece, 0 on the last

  // In the word at `kLength`; neither bit in a chain.
  static constexpr std::uint32_t kInline = 0x80000000;
  static constexpr std::uint32_t kSingle = 0x40000000;
  static constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;

  enum class Form : std::uint8_t {
    Inline,  ///< the value follows the head
    Single,  ///< one row of a long value page is the value
    Chain,   ///< pieces, each of which points to the next
  };

  Form form = Form::Inline;
  std::uint32_t length = 0;  ///< of the value, in bytes
  RowPointer first;          ///< of the first piece
  ByteView inlineBytes;

  /// Reads the head; the bytes must outlive it. Raises damage where they are too few.
  static LongValueHead decode(ByteView stored, const Location& location);
  /// The head, followed by the inline bytes.
  Bytes encode() const;
};

}  // namespace jet
