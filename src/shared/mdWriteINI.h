#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The screens' access to profile files. Neither procedure raises an error.
namespace mdWriteINI {

/// Writes one value; true when the platform's call succeeded. No caller checks it: contract.
bool WriteINI(std::u16string_view file, std::u16string_view section, std::u16string_view key,
              std::u16string_view value);

/// The value of a key (cut to 1023 characters), or the default where file, section or key is
/// absent. For a key that is present with an empty value it is the empty text: contract.
std::u16string ReadINI(std::u16string_view file, std::u16string_view section,
                       std::u16string_view key, std::u16string_view defaultValue = u"");
/// The same with an integer as the default.
std::u16string ReadINI(std::u16string_view file, std::u16string_view section,
                       std::u16string_view key, std::int32_t defaultValue);

}  // namespace mdWriteINI
