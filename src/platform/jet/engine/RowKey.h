#pragma once

#include <span>
#include <vector>

#include "platform/jet/engine/ColumnValue.h"
#include "platform/jet/engine/Row.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/Bytes.h"

namespace jet {

/// Makes the keys of one index from rows or from values.
class RowKey {
 public:
  RowKey(const TableSource& source, IndexNumber index);

  /// One column of the key.
  struct Part {
    ColumnIndex column;
    bool ascending = true;
  };
  const std::vector<Part>& parts() const { return parts_; }
  /// False where a column is unknown, or keys of its kind can't be made.
  bool isSupported() const { return supported_; }
  /// True where the keys sort as the values do.
  bool isOrdered() const { return ordered_; }

  /// True when the key has one of these columns, even after a column that the definition lacks.
  bool covers(std::span<const ColumnValue> values) const;

  /// Replaces `key` with the row's key, without its id; false where the row's key can't be
  /// made.
  bool make(const Row& row, Bytes& key) const;
  /// True when all key columns are known, and null in the row: an index may leave such a row out.
  bool isAllNull(const Row& row) const;
  /// True when one key column is null: such a key equals no other.
  bool hasNull(const Row& row) const;

 private:
  const std::vector<KeyColumn>& keyColumns() const;

  const TableSource& source_;
  IndexNumber index_;
  std::vector<Part> parts_;
  bool supported_ = true;
  bool ordered_ = true;
};

/// Appends one column's part of a row's key.
bool appendColumnKey(const TableSource& source, const Row& row, ColumnIndex column, bool ascending,
                     Bytes& key);

}  // namespace jet
