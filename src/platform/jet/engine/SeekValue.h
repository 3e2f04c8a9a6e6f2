#pragma once

#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// A bound of a range, converted to a value of the column's kind, from which a key can be made.
struct SeekValue {
  enum class Outcome {
    Value,     ///< `value` replaces the bound
    NoRow,     ///< no value of the column can meet the bound
    Unusable,  ///< no key can be made of the bound, or every value meets it
  };
  Outcome outcome = Outcome::Unusable;
  runtime::Variant value;
};

enum class Comparison { Equal, AtLeast, AtMost };

/// The column's value that replaces the bound in "column = bound", "column >= bound" or "column <=
/// bound". For a bound between two values of the column, it still includes every row that meets the
/// comparison.
SeekValue seekValue(const ColumnDefinition& column, Comparison comparison,
                    const runtime::Variant& bound);

}  // namespace jet
