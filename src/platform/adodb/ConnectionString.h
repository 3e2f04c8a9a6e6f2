#pragma once

#include <string>
#include <string_view>

namespace ADODB {

/// A parsed connection string: `name=value` pairs between semicolons, names in any case, blanks
/// around names and values ignored; a value in quotes may contain semicolons. The last of several
/// pairs with the same name is used.
struct ConnectionString {
  std::u16string provider;
  std::u16string dataSource;
  std::u16string databasePassword;

  explicit ConnectionString(std::u16string_view text);
};

}  // namespace ADODB
