#pragma once

#include "platform/jet/format/Numbers.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// A column's value, by the column's index in `Table::columns()`.
struct ColumnValue {
  ColumnIndex column;
  runtime::Variant value;
};

}  // namespace jet
