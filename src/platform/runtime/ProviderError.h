#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "platform/runtime/RunTimeError.h"

namespace runtime {

/// Numbers of the database provider's errors. Their texts are with the functions that raise them:
/// `jet::error`, `jetsql::error`, `ADODB::error`.
enum class ProviderNumber : std::int32_t {
  Statement = -2147217900,  ///< syntax, names, functions
  Parameter = -2147217904,  ///< a name that nothing explains
  Object = -2147217865,     ///< no such table or query
  RowChanged = -2147217864,
  Mismatch = -2147217913,  ///< types that don't go together
  TooLarge = -2147217833,  ///< a value that its column or a calculation can't hold
  WrongPassword = -2147217843,
  General = -2147467259,  ///< a failure without a number of its own
  NotCapable = 3251,      ///< what a provider may lack
};

/// An error of the provider, with its text in parts.
RunTimeError providerError(ProviderNumber number, std::initializer_list<std::u16string_view> words);

/// The general error, with a complete text.
RunTimeError generalError(std::u16string_view words);
/// Types that don't go together, in a statement or between a value and its column.
RunTimeError typeMismatch();

}  // namespace runtime
