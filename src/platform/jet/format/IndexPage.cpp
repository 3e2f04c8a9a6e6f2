#include "platform/jet/format/IndexPage.h"

#include <algorithm>

#include "platform/jet/format/Bits.h"

namespace jet {
namespace {

/// The prefix's length is one byte in Jet 3.
constexpr std::size_t kLongestJet3Prefix = 255;

std::size_t entryTrailerSize(bool leaf) {
  return kEntryRowSize + (leaf ? 0 : kEntryChildSize);
}

template <std::size_t kSize>
void putBigEndian(Bytes& bytes, std::uint32_t value) {
  for (std::size_t i = kSize; i-- > 0;)
    bytes.push_back(static_cast<std::uint8_t>(value >> kByteBits * i));
}

/// Length of the entries' common prefix, limited so that each entry keeps at least `kept` bytes.
std::size_t commonPrefix(const std::vector<IndexEntry>& entries, std::size_t kept) {
  if (entries.size() < 2) return 0;
  const Bytes& first = entries.front().bytes;
  std::size_t common = first.size() - kept;
  for (const IndexEntry& entry : entries) {
    const std::size_t most = std::min(common, entry.bytes.size() - kept);
    common = static_cast<std::size_t>(
        std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(most),
                      entry.bytes.begin())
            .first -
        first.begin());
  }
  return common;
}

/// Length of the common prefix to leave out so that the entries fit a page: 0 if they fit in full,
/// else one that leaves a leaf's entries their row ids, else (many equal keys) one that leaves
/// at least one byte. Absent where they don't fit even so.
std::optional<std::size_t> fittingPrefix(const Layout& layout, const IndexPage& page) {
  std::size_t size = 0;
  for (const IndexEntry& entry : page.entries)
    size += entry.bytes.size() + (page.leaf ? 0 : kEntryChildSize);
  if (size <= layout.indexCapacity()) return 0;
  if (!page.leaf) return std::nullopt;
  for (const std::size_t kept : {kEntryRowSize, std::size_t{1}}) {
    std::size_t prefix = commonPrefix(page.entries, kept);
    if (layout.version == Version::Jet3) prefix = std::min(prefix, kLongestJet3Prefix);
    if (size - prefix * (page.entries.size() - 1) <= layout.indexCapacity()) return prefix;
  }
  return std::nullopt;
}

}  // namespace

std::strong_ordering compareBytes(ByteView a, ByteView b) {
  const int order =
      a.empty() || b.empty() ? 0 : std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
  return order != 0 ? order <=> 0 : a.size() <=> b.size();
}

IndexEntry IndexEntry::of(ByteView key, RowId row) {
  IndexEntry entry;
  appendBytes(entry.bytes, key);
  putBigEndian<kEntrySlot - kEntryPage>(entry.bytes, row.page.value());
  entry.bytes.push_back(static_cast<std::uint8_t>(row.slot.value()));
  return entry;
}

RowId IndexEntry::row() const {
  const std::size_t at = bytes.size() - kEntryRowSize;
  return {PageNumber(bigEndian24At(bytes, at + kEntryPage)), SlotNumber(bytes[at + kEntrySlot])};
}

IndexPageView::IndexPageView(const Layout& layout, ByteView page, const Location& location)
    : layout_(&layout), page_(page) {
  leaf_ = page[PageHead::kType] == static_cast<std::uint8_t>(PageType::IndexLeaf);
  if (!leaf_ && page[PageHead::kType] != static_cast<std::uint8_t>(PageType::IndexNode))
    raiseDamaged(location, u"it is no page of an index");
  prefix_ =
      layout.version == Version::Jet3 ? page[layout.indexPrefix] : u16At(page, layout.indexPrefix);
  const std::size_t capacity = layout.indexCapacity();
  const std::size_t shortest = entryTrailerSize(leaf_) + 1;
  ends_.reserve(capacity / shortest);
  std::size_t start = 0;
  std::size_t omitted = 0;
  const ByteView mask = page.subspan(layout.indexMask, layout.indexData - layout.indexMask);
  forEachSetBit(mask, [&](std::size_t end) {
    const std::size_t length = end - start + omitted;
    if (end > capacity)
      raiseDamaged(
          location, u"an index entry ends after the page",
          {.offset = layout.indexData + start, .size = end - start, .available = layout.pageSize});
    if (length < shortest)
      raiseDamaged(location, u"an index entry is too short",
                   {.offset = layout.indexData + start,
                    .size = shortest,
                    .available = layout.indexData + end});
    ends_.push_back(static_cast<std::uint16_t>(end));
    start = end;
    omitted = prefix_;
  });
  if (!ends_.empty() && prefix_ > ends_.front())
    raiseDamaged(location, u"an index page leaves out more than its entries have",
                 {.offset = layout.indexData,
                  .size = prefix_,
                  .available = layout.indexData + ends_.front()});
}

ByteView IndexPageView::suffix(std::size_t entry) const {
  const std::size_t start = entry == 0 ? 0 : ends_[entry - 1];
  return page_.subspan(layout_->indexData + start, ends_[entry] - start);
}

std::strong_ordering IndexPageView::compare(std::size_t entry, ByteView bytes) const {
  ByteView own = suffix(entry);
  if (!leaf_ && (entry == 0 || prefix_ == 0)) own = own.first(own.size() - kEntryChildSize);
  if (entry == 0 || prefix_ == 0) return compareBytes(own, bytes);
  const ByteView front = page_.subspan(layout_->indexData, prefix_);
  if (bytes.size() < prefix_) {
    const std::strong_ordering order = compareBytes(front.first(bytes.size()), bytes);
    return order != 0 ? order : std::strong_ordering::greater;
  }
  const std::strong_ordering order = compareBytes(front, bytes.first(prefix_));
  if (order != 0) return order;
  if (!leaf_) {
    return compareBytes(this->entry(entry).bytes, bytes);
  }
  return compareBytes(own, bytes.subspan(prefix_));
}

std::size_t IndexPageView::lowerBound(ByteView bytes) const {
  std::size_t low = 0;
  std::size_t high = size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (compare(middle, bytes) < 0)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}

/// A byte of an entry, counted from its end. The first entry holds the prefix of all others.
std::uint8_t IndexPageView::byteFromEnd(ByteView own, std::size_t fromEnd) const {
  if (fromEnd <= own.size()) return own[own.size() - fromEnd];
  return page_[layout_->indexData + prefix_ - (fromEnd - own.size())];
}

PageNumber IndexPageView::child(std::size_t entry) const {
  const ByteView own = suffix(entry);
  std::uint32_t page = 0;
  for (std::size_t i = kEntryChildSize; i > 0; --i) page = page << kByteBits | byteFromEnd(own, i);
  return PageNumber(page);
}

void IndexPageView::copyEntry(std::size_t number, IndexEntry& copy) const {
  const ByteView front = page_.subspan(layout_->indexData, number > 0 ? prefix_ : 0);
  const ByteView own = suffix(number);
  copy.bytes.resize(front.size() + own.size());
  putBytes(copy.bytes, 0, front);
  putBytes(copy.bytes, front.size(), own);
  if (!leaf_) copy.bytes.erase(copy.bytes.end() - kEntryChildSize, copy.bytes.end());
  copy.child = leaf_ ? kNoPage : child(number);
}

IndexEntry IndexPageView::entry(std::size_t number) const {
  IndexEntry entry;
  copyEntry(number, entry);
  return entry;
}

IndexPage IndexPage::decode(const Layout& layout, ByteView page, const Location& location) {
  const IndexPageView view(layout, page, location);
  IndexPage open;
  open.leaf = view.isLeaf();
  open.owner = view.owner();
  open.previous = view.previous();
  open.next = view.next();
  open.tail = view.tail();
  open.level = view.level();
  for (std::size_t i = 0; i < view.size(); ++i) open.entries.push_back(view.entry(i));
  return open;
}

std::size_t IndexPage::lowerBound(ByteView entry) const {
  const auto at = std::ranges::partition_point(
      entries, [&](const IndexEntry& each) { return compareBytes(each.bytes, entry) < 0; });
  return static_cast<std::size_t>(at - entries.begin());
}

bool IndexPage::hasAt(std::size_t index, ByteView entry) const {
  return index < entries.size() && compareBytes(entries[index].bytes, entry) == 0;
}

std::optional<Bytes> IndexPage::encode(const Layout& layout) const {
  const std::optional<std::size_t> prefix = fittingPrefix(layout, *this);
  if (!prefix) return std::nullopt;
  Bytes data;
  Bytes page(layout.pageSize);
  page[PageHead::kType] =
      static_cast<std::uint8_t>(leaf ? PageType::IndexLeaf : PageType::IndexNode);
  page[PageHead::kMark] = PageHead::kLive;
  putU32(page, PageHead::kOwner, owner.value());
  putU32(page, layout.indexPrevious, previous.value());
  putU32(page, layout.indexNext, next.value());
  putU32(page, layout.indexTail, tail.value());
  page[layout.indexLevel] = level;
  page[layout.indexPrefix] = static_cast<std::uint8_t>(*prefix);
  if (layout.version == Version::Jet4) putU16(page, layout.indexPrefix, *prefix);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    appendBytes(data, ByteView(entries[i].bytes).subspan(i == 0 ? 0 : *prefix));
    if (!leaf) putBigEndian<kEntryChildSize>(data, entries[i].child.value());
    setBit(ByteSpan(page).subspan(layout.indexMask), data.size(), true);
  }
  putU16(page, PageHead::kFreeBytes, layout.indexCapacity() - data.size());
  putBytes(page, layout.indexData, data);
  return page;
}

}  // namespace jet
