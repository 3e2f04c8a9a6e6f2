#pragma once

#include <string>
#include <string_view>

namespace profile {

/// Returns the text of an entry of the per-user settings store, or the default if it is absent.
/// Application, section and key are matched ignoring case; the value is returned unchanged. An
/// unreadable store is treated as empty. Raises only InvalidProcedureCall, for a name that can't be
/// stored in a line.
std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                          std::u16string_view key, std::u16string_view defaultValue = u"");

/// Stores the text, creating application, section and key as needed; a new folder is open to this
/// user alone. When several programs on one machine store at once, no entry is lost. Raises
/// InvalidProcedureCall for a name that can't be stored in a line, PathFileAccess when the entry
/// can't be written or the file is in UTF-16.
void SaveSetting(std::u16string_view application, std::u16string_view section,
                 std::u16string_view key, std::u16string_view value);

}  // namespace profile
