#pragma once

#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// A bound of a range, turned into a value of the column's kind, of which a key can be made.
struct SeekValue {
  enum class Outcome {
    Value,     ///< `value` does for the bound
    NoRow,     ///< no value of the column can meet the bound
    Unusable,  ///< says nothing about the column's values
  };
  Outcome outcome = Outcome::Unusable;
  runtime::Variant value;
};

enum class Comparison { Equal, AtLeast, AtMost };

/// The column's value that does for "column = bound", "column >= bound" or "column <= bound"; what
/// a bound between two values of the column becomes lets every row that meets it through.
SeekValue seekValue(const ColumnDefinition& column, Comparison comparison,
                    const runtime::Variant& bound);

}  // namespace jet
