#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/Variant.h"

namespace storesql {

/// A value as one field of a printed line, in UTF-8: null as \N, backslash, tab, CR and LF in a
/// text as \\ \t \r \n, yes/no as 1 or 0, Currency with four decimals, a floating-point number as
/// the shortest decimal that reads back as the same number, a date as YYYY-MM-DD hh:mm:ss, a GUID
/// in braces and capitals, bytes as lower-case hexadecimal.
std::string printed(const runtime::Variant& value);
/// A text with the same escapes.
std::string escaped(std::u16string_view text);

/// The value of a field with these escapes: a text, or null for \N.
runtime::Variant unescaped(std::string_view field);

}  // namespace storesql
