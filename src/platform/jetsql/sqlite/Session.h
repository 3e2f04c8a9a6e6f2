#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/jetsql/sqlite/Result.h"

namespace jet {
class Database;
struct RowChange;
}  // namespace jet

namespace jetsql {

class SqlConnection;
struct ParsedQuery;

/// A session on one store database: the open file, and the SQL engine on it. Errors of all members
/// are the provider's, with the engine's texts.
class Session {
 public:
  /// Opens the file; `shownPath` is the path as the user knows it. Raises what
  /// `jet::Database::Database` raises.
  Session(const std::filesystem::path& file, std::u16string_view shownPath,
          std::u16string_view password);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Runs a SELECT or UNION of the dialect to its end. The file is locked for reading until then.
  Result run(std::u16string_view statement);

  /// Updates one row as `jet::Database::update` does, and tests the validation rules in the
  /// dialect.
  std::vector<runtime::Variant> update(const jet::RowChange& change);

  /// The file itself.
  jet::Database& database() { return *database_; }

 private:
  Result execute(const ParsedQuery& query);

  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<SqlConnection> connection_;
};

}  // namespace jetsql
