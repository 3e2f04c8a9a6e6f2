#pragma once

#include <optional>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// Bytes that a value of a type takes in the fixed area, whatever the column says; absent for types
/// whose length is the column's.
std::optional<std::size_t> typeSize(ColumnType type);

/// Raises damage where the bytes are too few for a value of the type.
void requireSize(ColumnType type, ByteView stored, const Location& location);

/// A stored value of any type but Boolean (which the null mask holds) as the column's kind of
/// value: see `Row::value`. For memo and OLE the bytes are those of the long value itself. Raises
/// damage where the bytes are too few for the type.
runtime::Variant decodeValue(Version version, const ColumnDefinition& column, ByteView stored,
                             const Location& location);

/// The bytes of a value of exactly the column's kind, as `decodeValue` returns it; neither null nor
/// Boolean. Absent where the value has no such bytes: a Jet 3 text with a character that has no
/// byte, a Numeric with more digits than the column takes. The caller checks lengths.
std::optional<Bytes> encodeValue(Version version, const ColumnDefinition& column,
                                 const runtime::Variant& value);

}  // namespace jet
