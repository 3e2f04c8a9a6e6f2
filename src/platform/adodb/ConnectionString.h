#pragma once

#include <string>
#include <string_view>

namespace ADODB {

/// What a connection string says: `name=value` pairs between semicolons, names in any case, blanks
/// around names and values not counting; a value in quotes may hold semicolons. Of two pairs of one
/// name the later one counts.
struct ConnectionString {
  std::u16string provider;
  std::u16string dataSource;
  std::u16string databasePassword;

  explicit ConnectionString(std::u16string_view text);
};

}  // namespace ADODB
