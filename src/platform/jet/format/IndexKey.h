#pragma once

#include <cstdint>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/TableDefinition.h"
#include "platform/jet/format/TextKey.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// How far keys of a column can be trusted.
enum class KeySupport : std::uint8_t {
  None,       ///< no key is known: an unknown type, or another sort order or code page
  Unordered,  ///< the bytes are known, but their order is not that of the values
  Ordered,    ///< the bytes are known and sort as the values do
};

KeySupport keySupport(Version version, const ColumnDefinition& column, bool ascending);

/// Appends one column's part of a key: a flag byte and the value. The value is null or of the
/// column's kind (see `Row::value`); for a text column, a Binary value is a key from
/// `appendTextKey`. False, with `key` unchanged, where the value has no key: a text with a
/// character outside the order's tables, or a column without support.
bool appendKey(Version version, const ColumnDefinition& column, bool ascending,
               const runtime::Variant& value, Bytes& key);

/// The same from a value's stored bytes, which are as many as the type takes; not for null, text
/// and Boolean.
bool appendStoredKey(Version version, const ColumnDefinition& column, bool ascending,
                     ByteView stored, Bytes& key);
/// Appends a text column's part from the text's key.
void appendTextPart(Version version, bool ascending, ByteView textKey, Bytes& key);

/// A null's part of a key: the flag byte alone.
std::uint8_t nullKey(bool ascending);

}  // namespace jet
