#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <string>

#include "platform/jetsql/functions/Type.h"
#include "platform/runtime/Variant.h"

namespace jetsql {

/// A value of SQLite's: an integer of 32 bits, any other number as a double, a text, bytes. `type`
/// tells an amount (an integer of ten-thousandths) from an integer, a scaled decimal from a text
/// and a GUID from bytes.
runtime::Variant sqlValue(sqlite3_value* value, Type type);

/// Bytes as a value of the type: a GUID or just bytes.
runtime::Variant bytesValue(std::span<const std::uint8_t> bytes, Type type);

/// A scaled decimal as SQLite has it: its key (see `kDecimalKey`), then its digits without zeros at
/// the end of the fraction. Such texts sort as the numbers do, and equal numbers are equal texts.
std::u16string decimalText(const runtime::Decimal& value);

}  // namespace jetsql
