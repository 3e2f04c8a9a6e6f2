#include "platform/jet/format/RowContent.h"

#include <algorithm>

namespace jet {
namespace {

constexpr std::uint8_t kUnusedJump = 0xFF;

std::size_t maskSize(std::size_t columnCount) {
  return (columnCount + 7) / 8;
}

}  // namespace

RowContent::RowContent(Version version, ByteView row, bool hasVariable, const Location& location)
    : row_(row), location_(location), jet3_(version == Version::Jet3), hasVariable_(hasVariable) {
  fixedAt_ = jet3_ ? 1 : 2;
  if (row.size() < fixedAt_)
    raiseDamaged(location, u"a row is too short", {0, fixedAt_, row.size()});
  columnCount_ = jet3_ ? row[0] : u16At(row, 0);
  const std::size_t mask = maskSize(columnCount_);
  const std::size_t count = hasVariable ? fixedAt_ : 0;  // bytes of nv
  if (row.size() < fixedAt_ + mask + count)
    raiseDamaged(location, u"a row is too short", {0, fixedAt_ + mask + count, row.size()});
  maskAt_ = row.size() - mask;
  trailerAt_ = maskAt_;
  if (!hasVariable) return;
  variableCount_ = jet3_ ? row[maskAt_ - 1] : u16At(row, maskAt_ - 2);
  jumpRoom_ = jet3_ ? (row.size() - 1) / 256 : 0;
  const std::size_t trailer = count + jumpRoom_ + count * (variableCount_ + 1);
  if (fixedAt_ + trailer > maskAt_)
    raiseDamaged(location, u"a row has more columns than bytes", {fixedAt_, trailer, maskAt_});
  trailerAt_ = maskAt_ - trailer;
  jumpCount_ = jumpRoom_;
  // Where the row's end passes a multiple of 256 that no offset can reach, the last jump is a
  // filler.
  if (jet3_ && jumpRoom_ > 0 && trailerAt_ / 256 < jumpRoom_) --jumpCount_;
}

std::size_t RowContent::jet3Offset(std::size_t slot) const {
  std::size_t offset = row_[maskAt_ - 2 - jumpRoom_ - slot];
  for (std::size_t k = 0; k < jumpCount_ && row_[maskAt_ - 2 - k] <= slot; ++k) offset += 256;
  return offset;
}

std::size_t RowContent::offsetOf(std::size_t slot) const {
  return jet3_ ? jet3Offset(slot) : u16At(row_, maskAt_ - 4 - 2 * slot);
}

ByteView RowContent::fixed(std::size_t offset, std::size_t length) const {
  if (fixedAt_ + offset + length > trailerAt_)
    raiseDamaged(location_, u"a value lies outside its row",
                 {fixedAt_ + offset, length, trailerAt_});
  return row_.subspan(fixedAt_ + offset, length);
}

ByteView RowContent::fixedArea() const {
  const std::size_t end = hasVariable_ ? offsetOf(0) : maskAt_;
  if (end < fixedAt_ || end > trailerAt_)
    raiseDamaged(location_, u"a row's fixed area has no end",
                 {fixedAt_, end - std::min(end, fixedAt_), trailerAt_});
  return row_.subspan(fixedAt_, end - fixedAt_);
}

std::optional<ByteView> RowContent::variable(std::size_t slot) const {
  if (slot >= variableCount_) return std::nullopt;
  const std::size_t from = offsetOf(slot);
  const std::size_t to = offsetOf(slot + 1);
  if (from < fixedAt_ || from > to || to > trailerAt_)
    raiseDamaged(location_, u"a value lies outside its row",
                 {from, to - std::min(from, to), trailerAt_});
  return row_.subspan(from, to - from);
}

namespace {

/// Offsets of the variable slots and, last, of their end.
std::vector<std::size_t> slotOffsets(const RowParts& parts, std::size_t fixedAt) {
  std::vector<std::size_t> offsets{fixedAt + parts.fixedArea.size()};
  for (const Bytes& value : parts.variable) offsets.push_back(offsets.back() + value.size());
  return offsets;
}

void appendJet3Trailer(Bytes& row, const std::vector<std::size_t>& offsets, std::size_t jumps) {
  for (std::size_t i = offsets.size(); i-- > 0;)
    row.push_back(static_cast<std::uint8_t>(offsets[i]));
  for (std::size_t k = jumps; k-- > 0;) {
    const auto over =
        std::ranges::find_if(offsets, [&](std::size_t offset) { return offset >= 256 * (k + 1); });
    row.push_back(over == offsets.end() ? kUnusedJump
                                        : static_cast<std::uint8_t>(over - offsets.begin()));
  }
  row.push_back(static_cast<std::uint8_t>(offsets.size() - 1));
}

void appendJet4Trailer(Bytes& row, const std::vector<std::size_t>& offsets) {
  for (std::size_t i = offsets.size(); i-- > 0;) appendU16(row, offsets[i]);
  appendU16(row, offsets.size() - 1);
}

/// Jumps of a Jet 3 row: the number depends on the finished length, which they are part of.
std::size_t jumpsFor(std::size_t lengthWithout) {
  std::size_t jumps = 0;
  while ((lengthWithout + jumps - 1) / 256 > jumps) ++jumps;
  return jumps;
}

}  // namespace

Bytes RowParts::encode(Version version, std::size_t atLeast) const {
  const bool jet3 = version == Version::Jet3;
  const std::size_t unit = jet3 ? 1 : 2;
  Bytes row;
  if (jet3)
    row.push_back(static_cast<std::uint8_t>(columnCount));
  else
    appendU16(row, columnCount);
  appendBytes(row, fixedArea);
  if (hasVariable) {
    const std::vector<std::size_t> offsets = slotOffsets(*this, unit);
    for (const Bytes& value : variable) appendBytes(row, value);
    const std::size_t rest = unit * (offsets.size() + 1) + maskSize(columnCount);
    const std::size_t shortest = row.size() + rest;
    std::size_t jumps = jet3 ? jumpsFor(shortest) : 0;
    std::size_t padding = 0;
    if (atLeast > shortest + jumps) {
      if (jet3) jumps = (atLeast - 1) / 256;
      padding = atLeast > shortest + jumps ? atLeast - shortest - jumps : 0;
    }
    row.resize(row.size() + padding);
    if (jet3)
      appendJet3Trailer(row, offsets, jumps);
    else
      appendJet4Trailer(row, offsets);
  }
  Bytes mask(maskSize(columnCount));
  for (std::size_t i = 0; i < columnCount && i < hasValue.size(); ++i)
    if (hasValue[i]) mask[i / 8] = static_cast<std::uint8_t>(mask[i / 8] | 1U << (i % 8));
  appendBytes(row, mask);
  return row;
}

}  // namespace jet
