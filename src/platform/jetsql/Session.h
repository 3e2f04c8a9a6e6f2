#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jetsql/ResultRow.h"

namespace jet {
class Database;
struct RowChange;
}  // namespace jet

namespace jetsql {

struct Query;

/// A session on one store database: the open file, and the SQL engine over it. Errors of all
/// members are the provider's, with the engine's words.
class Session {
 public:
  /// Opens the file; `shownPath` is the path as the user knows it. Raises what
  /// `jet::Database::Database` raises.
  Session(const std::filesystem::path& file, std::u16string_view shownPath,
          std::u16string_view password);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Runs a SELECT or UNION of the dialect to its end and hands over its rows one by one. The file
  /// is locked for reading until then.
  void run(std::u16string_view statement, RowSink& sink);

  /// How a statement would be run: a line for each step, as "SCAN t1 VIRTUAL TABLE INDEX
  /// 0:tblStock by PrimaryKey id>=? id<=? ordered".
  std::vector<std::string> plan(std::u16string_view statement);

  /// Updates one row as `jet::Database::update` does, with the rules of the store's owner tried in
  /// the dialect.
  std::vector<runtime::Variant> update(const jet::RowChange& change);

  /// The file itself.
  jet::Database& database();

 private:
  struct Connection;
  void execute(Query& query, std::string_view prefix, RowSink* sink,
               std::vector<std::string>* steps);
  void translated(std::u16string_view statement, std::string_view prefix, RowSink* sink,
                  std::vector<std::string>* steps);

  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<Connection> connection_;
};

}  // namespace jetsql
