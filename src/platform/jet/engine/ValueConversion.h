#pragma once

#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// The value as the column's kind (see `Row::value`) that is stored when `value` is assigned:
/// numbers are rounded half to even, text is read as a number, any value but bytes can become text,
/// null becomes False in a Boolean column. Raises the mismatch for what can't be converted, and
/// "too large" for a number beyond the column's range and a text or bytes longer than the column.
runtime::Variant convertTo(Version version, const ColumnDefinition& column,
                           const runtime::Variant& value);

}  // namespace jet
