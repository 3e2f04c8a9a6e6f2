#include "platform/jet/format/LongValue.h"

namespace jet {
namespace {

constexpr std::uint32_t kInline = 0x80000000;
constexpr std::uint32_t kSingle = 0x40000000;
constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;

}  // namespace

LongValueHead LongValueHead::decode(ByteView stored, const Location& location) {
  if (stored.size() < kSize)
    raiseDamaged(location, u"a long value's head is too short", {0, kSize, stored.size()});
  const std::uint32_t word = u32At(stored, kLength);
  LongValueHead head;
  head.length = word & kLengthMask;
  head.first = rowPointerAt(stored, kFirst);
  if ((word & kInline) != 0) {
    if (head.length > stored.size() - kSize)
      raiseDamaged(location, u"a long value claims more than its row holds",
                   {kSize, head.length, stored.size()});
    head.inlineBytes = stored.subspan(kSize, head.length);
  } else {
    head.form = (word & kSingle) != 0 ? Form::Single : Form::Chain;
  }
  return head;
}

Bytes LongValueHead::encode() const {
  Bytes stored;
  const std::uint32_t mark = form == Form::Inline ? kInline : form == Form::Single ? kSingle : 0;
  appendU32(stored, length | mark);
  appendU32(stored, form == Form::Inline ? 0 : first.pack());
  appendU32(stored, 0);
  appendBytes(stored, inlineBytes);
  return stored;
}

}  // namespace jet
