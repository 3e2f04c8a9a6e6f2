#pragma once

#include <span>
#include <vector>

#include "platform/jet/engine/Constraints.h"
#include "platform/jet/engine/IndexEditor.h"
#include "platform/jet/engine/LongValueWriter.h"
#include "platform/jet/engine/ObjectCatalog.h"
#include "platform/jet/engine/RowChange.h"
#include "platform/jet/engine/RowPlacement.h"
#include "platform/jet/engine/ValidationRule.h"

namespace jet {

/// The update of one row, made while the file's exclusive lock is held. Everything is computed and
/// checked before the first byte is written.
class RowUpdate {
 public:
  /// Reads the table's definition, its validation rules and the row. Raises the error of a changed
  /// row where the table, a column that the change names, or the row isn't as it was read.
  RowUpdate(Pager& pager, ObjectCatalog& catalog, const RowChange& change);

  /// Checks the change and writes it. Raises what `Database::update` raises.
  void run(const RuleTest& holds);
  /// Reads the row again: what the columns of `RowChange::asRead` hold now, in their order.
  std::vector<runtime::Variant> readAgain();

 private:
  std::vector<ColumnValue> columnsNow(std::span<const FieldValue> fields) const;
  std::vector<ColumnValue> converted() const;
  void storeValues(RowParts& parts, std::span<const ColumnValue> values);
  void dropLongValues(std::span<const ColumnValue> values);
  void changeRow(std::span<const ColumnValue> values);
  void write(const RowParts& parts, std::span<const KeyChange> keys,
             std::span<const ColumnValue> values);
  void incrementCounters(const std::vector<IndexNumber>& indexes);
  void removeStaleEntries(std::span<const ColumnValue> values);

  Pager& pager_;
  ObjectCatalog& catalog_;
  std::vector<PropertyBlock> properties_;
  TableSource source_;
  RowId id_;
  std::vector<ColumnValue> asRead_;
  std::vector<ColumnValue> given_;
  FoundRow found_;
  Row row_;
  PageChanges changes_;
  UsageMaps maps_;
  RowPlacement placement_;
  LongValueWriter longValues_;
};

}  // namespace jet
