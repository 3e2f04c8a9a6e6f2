#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {

struct Source;

/// The parts of a source that a statement uses: its columns, and the columns whose table rows the
/// statement needs, by their indexes.
struct UsedColumns {
  std::set<int> columns;
  std::set<int> rows;
};

/// A statement that is being written: its parameters and functions, and what it uses of each
/// source. The FROM clause of a query is written after all parts that may use its sources.
class StatementWriter {
 public:
  explicit StatementWriter(WrittenStatement& out) : out_(out) {}

  /// A column of a source; recorded as used.
  std::string column(const Source& source, int column);
  /// The packed id of the table row that the column comes from.
  std::string rowId(const Source& source, int column);
  /// What has been used of the source so far.
  const UsedColumns& usedColumns(const Source& source) { return used_[&source]; }

  /// Notes a table of FROM, with the columns that have been used of it so far.
  void addTable(const Source& source);
  std::string parameter(const std::u16string& text);
  std::string call(std::string_view function, const std::vector<std::string>& arguments);
  /// A name that the statement doesn't have yet.
  std::string freshName() { return "q" + std::to_string(++fresh_); }

 private:
  WrittenStatement& out_;
  std::map<const Source*, UsedColumns> used_;
  int fresh_ = 0;
};

/// Raises the error for a statement that grows too long; else returns the text.
std::string checked(std::string text);
/// The pieces with a separator between them, checked.
std::string joined(const std::vector<std::string>& pieces, std::string_view between);

/// The name of a source within SQLite.
std::string sourceName(const Source& source);

}  // namespace jetsql
