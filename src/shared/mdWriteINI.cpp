#include "shared/mdWriteINI.h"

#include <cstddef>
#include <exception>

#include "platform/profile/ProfileFile.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Conversion.h"

namespace mdWriteINI {

namespace {
constexpr std::size_t kBufferSize = 1024;
}

bool WriteINI(std::u16string_view file, std::u16string_view section, std::u16string_view key,
              std::u16string_view value) {
  try {
    return profile::WritePrivateProfileStringA(
        runtime::toCodePage(section), runtime::toCodePage(key), runtime::toCodePage(value), file);
  } catch (const std::exception&) {
    return false;  // this procedure reports no errors
  }
}

std::u16string ReadINI(std::u16string_view file, std::u16string_view section,
                       std::u16string_view key, std::u16string_view defaultValue) {
  try {
    return runtime::fromCodePage(
        profile::GetPrivateProfileStringA(runtime::toCodePage(section), runtime::toCodePage(key),
                                          runtime::toCodePage(defaultValue), kBufferSize, file));
  } catch (const std::exception&) {
    return {};  // an error yields the empty text, not the default
  }
}

std::u16string ReadINI(std::u16string_view file, std::u16string_view section,
                       std::u16string_view key, std::int32_t defaultValue) {
  return ReadINI(file, section, key, runtime::toText(defaultValue));
}

}  // namespace mdWriteINI
