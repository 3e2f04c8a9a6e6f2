#include "platform/jet/format/LongValue.h"

namespace jet {

LongValueHead LongValueHead::decode(ByteView stored, const Location& location) {
  if (stored.size() < kSize)
    raiseDamaged(location, u"a long value's head is too short",
                 {.size = kSize, .available = stored.size()});
  const std::uint32_t word = u32At(stored, kLength);
  LongValueHead head;
  head.length = word & kLengthMask;
  head.first = rowPointerAt(stored, kFirst);
  if ((word & kInline) != 0) {
    if (head.length > stored.size() - kSize)
      raiseDamaged(location, u"a long value claims more than its row holds",
                   {.offset = kSize, .size = head.length, .available = stored.size()});
    head.inlineBytes = stored.subspan(kSize, head.length);
  } else {
    head.form = (word & kSingle) != 0 ? Form::Single : Form::Chain;
  }
  return head;
}

Bytes LongValueHead::encode() const {
  Bytes stored(kSize + inlineBytes.size());
  const std::uint32_t mark = form == Form::Inline ? kInline : form == Form::Single ? kSingle : 0;
  putU32(stored, kLength, length | mark);
  if (form != Form::Inline) putRowPointer(stored, kFirst, first);
  putBytes(stored, kSize, inlineBytes);
  return stored;
}

}  // namespace jet
