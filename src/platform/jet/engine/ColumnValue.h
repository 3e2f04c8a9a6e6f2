#pragma once

#include "platform/runtime/Variant.h"

namespace jet {

/// A column's value, by the column's position in `Table::columns()`.
struct ColumnValue {
  int column = 0;
  runtime::Variant value;
};

}  // namespace jet
