#pragma once

#include <optional>

#include "platform/jet/engine/Row.h"
#include "platform/jet/engine/TableSource.h"

namespace jet {

/// Reads single rows of a table by their ids, one after the other. Adjacent rows are read fast: the
/// last row's page stays open.
class RowReader {
 public:
  explicit RowReader(const TableSource& source) : source_(source) {}

  /// Moves to the row of that id; false when there is none.
  bool find(RowId id);
  /// The row of the last successful `find`.
  const Row& row() const { return row_; }

 private:
  const TableSource& source_;
  PageNumber pageNumber_;
  std::optional<OpenDataPage> open_;  ///< absent where that page isn't one of the table's
  FoundRow found_;
  Row row_;
};

}  // namespace jet
