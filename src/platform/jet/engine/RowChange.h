#pragma once

#include <vector>

#include "platform/jet/engine/TableIdentity.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// A column's value, by the column's identity.
struct FieldValue {
  ColumnIdentity column;
  runtime::Variant value;
};

/// The update of one row. It names the table and its columns as they were when they were read,
/// under an earlier lock.
struct RowChange {
  TableIdentity table;
  RowId row;
  std::vector<FieldValue> values;  ///< the columns to set
  std::vector<FieldValue> asRead;  ///< the columns that were read, as they were then
};

}  // namespace jet
