#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {

/// The columns, and the rows of columns, that a source is asked for, by their indexes.
struct Asked {
  std::set<int> columns;
  std::set<int> rows;
};

/// A statement in the making: its parameters and functions, and what each source is asked for. The
/// FROM clause of a query is written after everything that may ask its sources.
class StatementWriter {
 public:
  explicit StatementWriter(WrittenStatement& out) : out_(out) {}

  /// A column of a source, which is asked for it from now on.
  std::string column(const Source& source, int column);
  /// The packed id of the table row that the column comes from.
  std::string rowId(const Source& source, int column);
  /// What the source has been asked for so far.
  const Asked& asked(const Source& source) { return asked_[&source]; }

  void addTable(const Source& source);
  std::string parameter(const std::u16string& text);
  std::string call(std::string_view function, const std::vector<std::string>& arguments);
  /// A name that the statement doesn't have yet.
  std::string freshName() { return "q" + std::to_string(++fresh_); }

 private:
  WrittenStatement& out_;
  std::map<const Source*, Asked> asked_;
  int fresh_ = 0;
};

/// Raises the error for a statement that grows too long; else returns the text.
std::string checked(std::string text);
/// The pieces with something between, checked.
std::string joined(const std::vector<std::string>& pieces, std::string_view between);

/// The name of a source within SQLite.
std::string sourceName(const Source& source);

}  // namespace jetsql
