#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/RowPointer.h"

namespace jet {

/// Sizes of the row's id at the end of an entry, and of the child that follows it in a node; both
/// are big endian, so that entries sort as plain bytes.
inline constexpr std::size_t kEntryRowSize = 4;
inline constexpr std::size_t kEntryChildSize = 4;
/// Offsets in the row id.
inline constexpr std::size_t kEntryPage = 0;  ///< u24
inline constexpr std::size_t kEntrySlot = 3;  ///< u8

/// One entry of an index page: a key with the id of its row. An entry of a node also has a child
/// page, whose entries are all less than or equal to it.
struct IndexEntry {
  Bytes bytes;  ///< key, then the row's id
  PageNumber child;

  /// An entry for that key and row.
  static IndexEntry of(ByteView key, RowId row);
  ByteView key() const { return ByteView(bytes).first(bytes.size() - kEntryRowSize); }
  RowId row() const;
};

/// Order of entries and keys: as plain bytes; a prefix comes before the longer of the two.
std::strong_ordering compareBytes(ByteView a, ByteView b);

/// An index page opened for lookup: entries are compared without being copied.
class IndexPageView {
 public:
  /// Raises damage where the page is no index page or its entries don't fit it. The page must
  /// outlive the view.
  IndexPageView(const Layout& layout, ByteView page, const Location& location);

  bool isLeaf() const { return leaf_; }
  PageNumber owner() const { return PageNumber(u32At(page_, PageHead::kOwner)); }
  PageNumber previous() const { return PageNumber(u32At(page_, layout_->indexPrevious)); }
  PageNumber next() const { return PageNumber(u32At(page_, layout_->indexNext)); }
  /// Nodes: the child for entries greater than the last one here.
  PageNumber tail() const { return PageNumber(u32At(page_, layout_->indexTail)); }
  /// 0 for leaves, 1 for their parents, and so on.
  std::uint8_t level() const { return page_[layout_->indexLevel]; }

  std::size_t size() const { return ends_.size(); }
  /// The first entry that is not less than `bytes`; `size()` when all are.
  std::size_t lowerBound(ByteView bytes) const;
  /// Compares an entry (key and row id) with `bytes`.
  std::strong_ordering compare(std::size_t entry, ByteView bytes) const;
  PageNumber child(std::size_t entry) const;
  IndexEntry entry(std::size_t entry) const;
  /// The same into an existing entry.
  void copyEntry(std::size_t entry, IndexEntry& copy) const;

 private:
  ByteView suffix(std::size_t entry) const;
  std::uint8_t byteFromEnd(ByteView own, std::size_t fromEnd) const;

  const Layout* layout_;
  ByteView page_;
  bool leaf_ = false;
  std::size_t prefix_ = 0;
  std::vector<std::uint16_t> ends_;  ///< where each entry ends, from the start of the entry data
};

/// A decoded index page, to be changed and encoded again.
struct IndexPage {
  bool leaf = true;
  PageNumber owner;  ///< definition page of the table
  PageNumber previous;
  PageNumber next;
  PageNumber tail;
  std::uint8_t level = 0;
  std::vector<IndexEntry> entries;

  static IndexPage decode(const Layout& layout, ByteView page, const Location& location);
  /// The index of the first entry that is not less than `entry`; the number of entries where all
  /// are.
  std::size_t lowerBound(ByteView entry) const;
  /// True where the entry at that index equals `entry`.
  bool hasAt(std::size_t index, ByteView entry) const;
  /// The encoded page. Entries are written in full where they fit; else a leaf's entries leave out
  /// their common prefix, which reaches into the row ids only where they wouldn't fit
  /// otherwise. Absent where they don't fit even so.
  std::optional<Bytes> encode(const Layout& layout) const;
};

}  // namespace jet
