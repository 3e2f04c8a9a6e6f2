#pragma once

#include <cstddef>
#include <optional>
#include <set>

#include "platform/jet/engine/Cursor.h"
#include "platform/jet/engine/IndexRange.h"
#include "platform/jet/engine/IndexWalk.h"
#include "platform/jet/engine/KeyRange.h"
#include "platform/jet/engine/RowKey.h"
#include "platform/jet/engine/RowReader.h"

namespace jet {

/// The rows of an index's range, in the index's order. An entry that an interrupted change left,
/// without a row or with a key that isn't its row's, is skipped.
class IndexCursor : public Cursor {
 public:
  IndexCursor(const TableSource& source, IndexNumber index, const IndexRange& range);

  bool next() override;
  const Row& row() const override { return reader_.row(); }

 private:
  bool isStale();

  const TableSource& source_;
  IndexNumber index_;
  RowKey key_;
  KeyRange range_;
  std::optional<IndexWalk> walk_;
  RowReader reader_;
  Bytes rowKey_;
  std::set<RowId> withoutKey_;  ///< rows returned whose key can't be made
};

}  // namespace jet
