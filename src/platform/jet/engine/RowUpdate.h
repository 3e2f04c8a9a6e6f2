#pragma once

#include <span>
#include <vector>

#include "platform/jet/engine/Catalog.h"
#include "platform/jet/engine/Constraints.h"
#include "platform/jet/engine/IndexEditor.h"
#include "platform/jet/engine/RowPlacement.h"

namespace jet {

/// The change of one row, made while the file's exclusive lock is held. Everything is computed and
/// checked before the first byte is written.
class RowUpdate {
 public:
  /// Finds the row; raises -2147217864 where there is none.
  RowUpdate(Pager& pager, Catalog& catalog, const TableSource& source, RowId id);

  /// Raises -2147217864 unless the row still has these values.
  void expect(std::span<const ColumnValue> asRead) const;
  /// Changes the row and writes. Raises as `Database::update` says.
  void run(std::span<const ColumnValue> values);

 private:
  std::vector<ColumnValue> converted(std::span<const ColumnValue> values) const;
  void storeValues(RowParts& parts, std::span<const ColumnValue> values);
  void dropLongValues(std::span<const ColumnValue> values);
  void write(const RowParts& parts, std::span<const KeyChange> keys,
             std::span<const ColumnValue> values);
  void raiseCounters(const std::vector<std::size_t>& indexes);
  void cleanUp(std::span<const ColumnValue> values);

  Catalog& catalog_;
  const TableSource& source_;
  RowId id_;
  FoundRow found_;
  Row row_;
  PageChanges changes_;
  UsageMaps maps_;
  RowPlacement placement_;
};

}  // namespace jet
