#include "platform/profile/SettingsStore.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
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

namespace fs = std::filesystem;
using runtime::ErrorNumber;
using runtime::RunTimeError;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::u16string foldedName(std::string_view name) {
  return runtime::foldCase(runtime::fromUtf8(name));
}

// A value is stored as it is. One with line breaks, other control characters except tabs, or
// unpaired surrogates is escaped, and marked as such by a backslash and a quote in front; so is one
// that begins with this mark itself.
constexpr std::u16string_view kEscapeMark = u"\\\"";
constexpr char16_t kEscapeEnd = u'"';  // follows the escaped value

bool isEscapedUnit(char16_t unit) {
  return (unit < u' ' && unit != u'\t') || runtime::isSurrogate(unit);
}

bool needsEscaping(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (runtime::isSurrogatePair(text, i)) {
      ++i;
    } else if (isEscapedUnit(text[i])) {
      return true;
    }
  }
  return false;
}

std::string encoded(std::u16string_view value) {
  if (!needsEscaping(value) && !value.starts_with(kEscapeMark)) return runtime::toUtf8(value);
  std::u16string text(kEscapeMark);
  for (const char16_t unit : value) {
    if (unit == u'\\') {
      text += u"\\\\";
    } else if (unit == u'\n') {
      text += u"\\n";
    } else if (unit == u'\r') {
      text += u"\\r";
    } else if (isEscapedUnit(unit)) {
      text += u"\\u" + runtime::hexDigits(unit, 4);
    } else {
      text += unit;
    }
  }
  return runtime::toUtf8(text + kEscapeEnd);
}

std::optional<char16_t> unitOf(std::u16string_view digits) {
  if (digits.size() != 4) return std::nullopt;
  unsigned unit = 0;
  for (const char16_t digit : digits) {
    const std::size_t value = std::u16string_view(u"0123456789ABCDEF").find(digit);
    if (value == digits.npos) return std::nullopt;
    unit = unit << 4U | static_cast<unsigned>(value);
  }
  return static_cast<char16_t>(unit);
}

/// Removes one unit from the front of an escaped text; nullopt where it isn't well formed.
std::optional<char16_t> takeUnit(std::u16string_view& text) {
  const bool isEscape = text.front() == u'\\';
  const char16_t kind = isEscape && text.size() > 1 ? text[1] : u'\0';
  std::optional<char16_t> unit;
  if (!isEscape) unit = text.front();
  if (kind == u'\\') unit = u'\\';
  if (kind == u'n') unit = u'\n';
  if (kind == u'r') unit = u'\r';
  if (kind == u'u') unit = unitOf(text.substr(2, 4));
  if (unit) text.remove_prefix(!isEscape ? 1 : kind == u'u' ? 6 : 2);
  return unit;
}

bool isWellFormed(std::u16string_view text) {
  while (!text.empty())
    if (!takeUnit(text)) return false;
  return true;
}

std::u16string decoded(std::string_view bytes) {
  std::u16string text = runtime::fromUtf8(bytes);
  const std::size_t marks = kEscapeMark.size() + 1;
  if (text.size() < marks || !text.starts_with(kEscapeMark) || text.back() != kEscapeEnd)
    return text;
  std::u16string_view escaped =
      std::u16string_view(text).substr(kEscapeMark.size(), text.size() - marks);
  if (!isWellFormed(escaped)) return text;
  // Decoded in the text's own memory: the read position is always ahead of the write position.
  std::size_t length = 0;
  while (!escaped.empty()) {
    const std::optional<char16_t> unit = takeUnit(escaped);
    text[length++] = *unit;
  }
  text.resize(length);
  return text;
}

std::optional<fs::path> configFolder() {
  const char* const config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && fs::path(config).is_absolute()) return config;
  const char* const home = std::getenv("HOME");
  if (home != nullptr && fs::path(home).is_absolute()) return fs::path(home) / ".config";
  const passwd* const user = ::getpwuid(::getuid());
  if (user == nullptr || user->pw_dir == nullptr) return std::nullopt;
  return fs::path(user->pw_dir) / ".config";
}

fs::path settingsFile(std::u16string_view application) {
  const std::optional<fs::path> config = configFolder();
  if (!config) throw RunTimeError(ErrorNumber::PathFileAccess);
  return files::findEntry(*config / "program-settings", runtime::lowerCase(application) + u".ini");
}

/// Creates the folder and its missing parents, open to this user alone. A failure shows in the
/// write that follows.
void createPrivateFolder(const fs::path& folder) {
  constexpr mode_t kUserAlone = 0700;
  if (::mkdir(folder.c_str(), kUserAlone) == 0 || errno != ENOENT) return;
  if (!folder.has_relative_path()) return;
  createPrivateFolder(folder.parent_path());
  ::mkdir(folder.c_str(), kUserAlone);
}

/// Removes the byte order mark and returns it, empty where there is none.
std::string takeByteOrderMark(std::string& bytes) {
  if (!bytes.starts_with(kByteOrderMark)) return {};
  bytes.erase(0, kByteOrderMark.size());
  return std::string(kByteOrderMark);
}

/// False for names that could not be read back from a line.
bool isStorableName(std::u16string_view name, std::u16string_view forbidden) {
  return !name.empty() && !needsEscaping(name) && name == runtime::trim(name) &&
         name.find_first_of(forbidden) == name.npos && name.front() != u';';
}

void checkNames(std::u16string_view application, std::u16string_view section,
                std::u16string_view key) {
  if (!isStorableName(application, u"/\\") || !isStorableName(section, u"]\t") ||
      !isStorableName(key, u"=[\t"))
    throw RunTimeError(ErrorNumber::InvalidProcedureCall);
}

}  // namespace

std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                          std::u16string_view key, std::u16string_view defaultValue) {
  checkNames(application, section, key);
  try {
    std::string bytes = files::readContent(settingsFile(application)).value_or("");
    takeByteOrderMark(bytes);
    const IniText text(std::move(bytes), foldedName);
    const auto stored = text.value(runtime::toUtf8(section), runtime::toUtf8(key));
    return stored ? decoded(*stored) : std::u16string(defaultValue);
  } catch (const RunTimeError&) {
    // A store that can't be read counts as one without entries.
    return std::u16string(defaultValue);
  }
}

void SaveSetting(std::u16string_view application, std::u16string_view section,
                 std::u16string_view key, std::u16string_view value) {
  checkNames(application, section, key);
  try {
    const fs::path file = settingsFile(application);
    createPrivateFolder(file.parent_path());
    files::changeContent(file, [&](std::string bytes) {
      if (IniText::isUtf16(bytes)) throw RunTimeError(ErrorNumber::PathFileAccess);
      const std::string mark = takeByteOrderMark(bytes);
      const std::string_view lineEnd = bytes.find("\r\n") == bytes.npos ? "\n" : "\r\n";
      IniText text(std::move(bytes), foldedName);
      text.setValue(runtime::toUtf8(section), runtime::toUtf8(key), encoded(value), lineEnd);
      return mark + text.takeBytes();
    });
  } catch (const RunTimeError&) {
    throw RunTimeError(ErrorNumber::PathFileAccess);
  }
}

}  // namespace profile
