#include "platform/jet/format/RowContent.h"

#include <algorithm>

#include "platform/jet/format/StoredValue.h"

namespace jet {
namespace {

/// Offset of the number of columns.
constexpr std::size_t kColumnCount = 0;
/// Jet 3: the bytes that an offset of one byte reaches. A jump is the slot at which the offsets
/// pass another multiple of it.
constexpr std::size_t kJumpStep = 256;
constexpr std::uint8_t kUnusedJump = 0xFF;

constexpr std::u16string_view kTooShort = u"a row is too short";
constexpr std::u16string_view kOutside = u"a value lies outside its row";

/// Most jumps that a row of that length takes.
std::size_t mostJumps(std::size_t rowLength) {
  return (rowLength - 1) / kJumpStep;
}

}  // namespace

RowContent::RowContent(Version version, ByteView row, bool hasVariable, const Location& location)
    : row_(row), location_(location), unit_(layoutOf(version).rowUnit), hasVariable_(hasVariable) {
  if (row.size() < unit_)
    raiseDamaged(location, kTooShort, {.size = unit_, .available = row.size()});
  columnCount_ = unitAt(kColumnCount);
  const std::size_t mask = bytesOfBits(columnCount_);
  const std::size_t count = hasVariable ? unit_ : 0;  // bytes of nv
  if (row.size() < unit_ + mask + count)
    raiseDamaged(location, kTooShort, {.size = unit_ + mask + count, .available = row.size()});
  maskAt_ = row.size() - mask;
  trailerAt_ = maskAt_;
  if (!hasVariable) return;
  variableCount_ = unitAt(maskAt_ - unit_);
  jumpCount_ = version == Version::Jet3 ? mostJumps(row.size()) : 0;
  const std::size_t trailer = count + jumpCount_ + unit_ * (variableCount_ + 1);
  if (unit_ + trailer > maskAt_)
    raiseDamaged(location, u"a row has more columns than bytes",
                 {.offset = unit_, .size = trailer, .available = maskAt_});
  trailerAt_ = maskAt_ - trailer;
  jumpsEnd_ = maskAt_ - unit_;
  offsetsEnd_ = jumpsEnd_ - jumpCount_;
  // Where the row's end passes a multiple of 256 that no offset can reach, the last jump is a
  // filler.
  if (trailerAt_ / kJumpStep < jumpCount_) --jumpCount_;
}

std::size_t RowContent::unitAt(std::size_t at) const {
  return unit_ == 1 ? row_[at] : u16At(row_, at);
}

std::size_t RowContent::offsetAt(std::size_t slot) const {
  std::size_t offset = unitAt(offsetsEnd_ - unit_ * (slot + 1));
  for (std::size_t k = 0; k < jumpCount_ && row_[jumpsEnd_ - 1 - k] <= slot; ++k)
    offset += kJumpStep;
  return offset;
}

ByteView RowContent::fixed(const ColumnDefinition& column) const {
  const std::size_t offset = unit_ + column.fixedOffset;
  const std::size_t length = fixedSize(column);
  if (offset + length > trailerAt_)
    raiseDamaged(location_, kOutside, {.offset = offset, .size = length, .available = trailerAt_});
  return row_.subspan(offset, length);
}

ByteView RowContent::fixedArea() const {
  const std::size_t end = hasVariable_ ? offsetAt(0) : maskAt_;
  if (end < unit_ || end > trailerAt_)
    raiseDamaged(location_, u"a row's fixed area has no end",
                 {.offset = unit_, .size = end - std::min(end, unit_), .available = trailerAt_});
  return row_.subspan(unit_, end - unit_);
}

std::optional<ByteView> RowContent::variable(VariableSlot slot) const {
  if (slot.value() >= variableCount_) return std::nullopt;
  const std::size_t from = offsetAt(slot.value());
  const std::size_t to = offsetAt(slot.value() + std::size_t{1});
  if (from < unit_ || from > to || to > trailerAt_)
    raiseDamaged(location_, kOutside,
                 {.offset = from, .size = to - std::min(from, to), .available = trailerAt_});
  return row_.subspan(from, to - from);
}

namespace {

void putUnit(ByteSpan row, std::size_t at, Version version, std::size_t value) {
  if (version == Version::Jet3)
    row[at] = static_cast<std::uint8_t>(value);
  else
    putU16(row, at, value);
}

void appendUnit(Bytes& row, Version version, std::size_t value) {
  const std::size_t at = row.size();
  row.resize(at + layoutOf(version).rowUnit);
  putUnit(row, at, version, value);
}

/// Offsets of the variable slots and, last, of their end.
std::vector<std::size_t> slotOffsets(const RowParts& parts, std::size_t fixedAt) {
  std::vector<std::size_t> offsets{fixedAt + parts.fixedArea.size()};
  for (const Bytes& value : parts.variable) offsets.push_back(offsets.back() + value.size());
  return offsets;
}

void appendTrailer(Bytes& row, Version version, const std::vector<std::size_t>& offsets,
                   std::size_t jumps) {
  for (std::size_t i = offsets.size(); i-- > 0;) appendUnit(row, version, offsets[i]);
  for (std::size_t k = jumps; k-- > 0;) {
    const auto over = std::ranges::find_if(
        offsets, [&](std::size_t offset) { return offset >= kJumpStep * (k + 1); });
    row.push_back(over == offsets.end() ? kUnusedJump
                                        : static_cast<std::uint8_t>(over - offsets.begin()));
  }
  appendUnit(row, version, offsets.size() - 1);
}

/// Jumps of a Jet 3 row: the number depends on the finished length, which they are part of.
std::size_t jumpsFor(std::size_t lengthWithout) {
  std::size_t jumps = 0;
  while (mostJumps(lengthWithout + jumps) > jumps) ++jumps;
  return jumps;
}

}  // namespace

Bytes RowParts::encode(Version version, std::size_t atLeast) const {
  const bool jet3 = version == Version::Jet3;
  const std::size_t unit = layoutOf(version).rowUnit;
  Bytes row(unit);
  putUnit(row, kColumnCount, version, columnCount);
  appendBytes(row, fixedArea);
  if (hasVariable) {
    const std::vector<std::size_t> offsets = slotOffsets(*this, unit);
    for (const Bytes& value : variable) appendBytes(row, value);
    const std::size_t rest = unit * (offsets.size() + 1) + bytesOfBits(columnCount);
    const std::size_t shortest = row.size() + rest;
    std::size_t jumps = jet3 ? jumpsFor(shortest) : 0;
    std::size_t padding = 0;
    if (atLeast > shortest + jumps) {
      if (jet3) jumps = mostJumps(atLeast);
      padding = atLeast > shortest + jumps ? atLeast - shortest - jumps : 0;
    }
    row.resize(row.size() + padding);
    appendTrailer(row, version, offsets, jumps);
  }
  Bytes mask(bytesOfBits(columnCount));
  for (std::size_t i = 0; i < columnCount && i < hasValue.size(); ++i) setBit(mask, i, hasValue[i]);
  appendBytes(row, mask);
  return row;
}

}  // namespace jet
