#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "platform/runtime/RunTimeError.h"

namespace runtime {

/// Numbers of the database provider's errors. The functions that make these errors, in the
/// namespaces `jet::error`, `jetsql::error` and `ADODB::error`, have the texts.
enum class ProviderNumber : std::int32_t {
  Statement = -2147217900,  ///< syntax, names, functions
  Parameter = -2147217904,  ///< an unknown name, taken for a parameter without a value
  Object = -2147217865,     ///< no such table or query
  RowChanged = -2147217864,
  Mismatch = -2147217913,  ///< incompatible types
  TooLarge = -2147217833,  ///< a value that its column or a calculation can't hold
  WrongPassword = -2147217843,
  General = -2147467259,  ///< a failure without a number of its own
  NotCapable = 3251,      ///< the provider doesn't support the operation
};

/// An error of the provider, with its text in parts.
RunTimeError providerError(ProviderNumber number, std::initializer_list<std::u16string_view> parts);

/// The general error, with a complete text.
RunTimeError generalError(std::u16string_view text);
/// The provider's error for incompatible types, in a statement or between a value and its column.
RunTimeError providerMismatch();

}  // namespace runtime
