#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/IndexPage.h"

namespace jet {

/// Most levels of an index that are followed; four hold more entries than a file has room for.
inline constexpr int kMostIndexLevels = 24;

/// Texts for damage of an index.
inline constexpr std::u16string_view kNoLeaves = u"an index has no leaves";
inline constexpr std::u16string_view kOtherIndex = u"it belongs to another table's index";

/// A walk over an index's entries, leaf by leaf. Entries that do not ascend (an interrupted split
/// leaves some twice) are skipped.
class IndexWalk {
 public:
  /// Starts before the first entry that is not less than `from`.
  IndexWalk(const TableSource& source, IndexNumber index, ByteView from);

  /// Moves to the next entry; false past the last one.
  bool next();
  /// The entry's bytes: key, then row id.
  const Bytes& entry() const { return entry_.bytes; }
  RowId row() const { return entry_.row(); }

 private:
  void openPage(PageNumber number, const Location& from);

  const TableSource& source_;
  std::shared_ptr<const Pager::OpenIndexPage> open_;
  const IndexPageView* view_ = nullptr;
  PageNumber pageNumber_;
  std::uint32_t leavesSeen_ = 0;
  std::size_t at_ = 0;
  IndexEntry entry_;
  bool first_ = true;
};

}  // namespace jet
