#include "platform/profile/ProfileFile.h"

#include <exception>
#include <optional>
#include <utility>

#include "platform/files/FileContent.h"
#include "platform/files/ProgramFolder.h"
#include "platform/profile/IniText.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace profile {
namespace {

using runtime::ErrorNumber;
using runtime::RunTimeError;

std::u16string foldedName(std::string_view name) {
  return runtime::foldCase(runtime::fromCodePage(name));
}

std::string_view withoutQuotes(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view withoutTrailingSpaces(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// The stored value, cut to what a buffer of `size` bytes holds with a terminator; nullopt where
/// there is none.
std::optional<std::string> storedValue(std::string_view section, std::string_view key,
                                       std::size_t size, std::u16string_view file) {
  std::optional<std::string> bytes = files::readContent(files::resolve(file));
  if (!bytes) return std::nullopt;
  const IniText text(std::move(*bytes), foldedName);
  const std::optional<std::string_view> value = text.value(section, key);
  if (!value) return std::nullopt;
  return std::string(withoutQuotes(IniText::trimmed(*value)).substr(0, size - 1));
}

}  // namespace

std::string GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                     std::string_view defaultValue, std::size_t size,
                                     std::u16string_view file) {
  if (size == 0) return {};
  try {
    if (!file.empty())
      if (std::optional<std::string> value = storedValue(section, key, size, file)) return *value;
  } catch (const std::exception&) {
    // A file that can't be read counts as one without keys: this call has no way to fail.
  }
  return std::string(withoutTrailingSpaces(defaultValue).substr(0, size - 1));
}

bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                std::string_view value, std::u16string_view file) {
  if (file.empty()) return false;
  try {
    files::changeContent(files::resolve(file), [&](std::string bytes) {
      if (IniText::isUtf16(bytes)) throw RunTimeError(ErrorNumber::PathFileAccess);
      IniText text(std::move(bytes), foldedName);
      text.setValue(section, key, value, "\r\n");
      return text.takeBytes();
    });
    return true;
  } catch (const std::exception&) {
    // The result is the only report of a failure.
    return false;
  }
}

}  // namespace profile
