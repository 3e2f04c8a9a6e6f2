#include "platform/profile/ProfileFile.h"

#include <optional>

#include "platform/files/ProgramFolder.h"
#include "platform/files/WholeFile.h"
#include "platform/profile/IniText.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace profile {
namespace {

std::u16string foldedName(std::string_view name) {
  return runtime::foldCase(runtime::fromCodePage(name));
}

std::string_view withoutQuotes(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view withoutSpacesBehind(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::optional<std::string> storedValue(std::string_view section, std::string_view key,
                                       std::u16string_view file) {
  if (file.empty()) return std::nullopt;
  try {
    const std::optional<std::string> bytes = files::readWhole(files::resolve(file));
    return bytes ? IniText(*bytes, foldedName).value(section, key) : std::nullopt;
  } catch (const runtime::RunTimeError&) {
    // A file that can't be read has no keys: this call knows no failure.
    return std::nullopt;
  }
}

}  // namespace

std::string GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                     std::string_view defaultValue, std::size_t size,
                                     std::u16string_view file) {
  if (size == 0) return {};
  const std::optional<std::string> stored = storedValue(section, key, file);
  const std::string_view value =
      stored ? withoutQuotes(IniText::trimmed(*stored)) : withoutSpacesBehind(defaultValue);
  return std::string(value.substr(0, size - 1));
}

bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                std::string_view value, std::u16string_view file) {
  if (file.empty()) return false;
  try {
    const std::filesystem::path path = files::resolve(file);
    IniText text(files::readWhole(path).value_or(""), foldedName);
    text.setValue(section, key, value, "\r\n");
    files::replaceWhole(path, text.bytes());
    return true;
  } catch (const std::exception&) {
    // Its callers learn of a failure by the value alone.
    return false;
  }
}

}  // namespace profile
