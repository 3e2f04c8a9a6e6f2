#pragma once

#include <string>
#include <string_view>

namespace profile {

/// The stored text of an entry of the per-user settings store, the default where it is absent.
/// Application, section and key are found without regard to case; the value is kept exactly. Raises
/// InvalidProcedureCall for a name that a line of the store couldn't hold, and nothing else: a
/// store that can't be read has no entries.
std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                          std::u16string_view key, std::u16string_view defaultValue = u"");

/// Stores the text, creating application, section and key as needed; a new folder is open to this
/// user alone. Of programs on one machine that store at once, none loses the entry of another.
/// Raises InvalidProcedureCall for such a name, PathFileAccess when the entry can't be written or
/// the file is in UTF-16.
void SaveSetting(std::u16string_view application, std::u16string_view section,
                 std::u16string_view key, std::u16string_view value);

}  // namespace profile
