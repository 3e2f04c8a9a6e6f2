#include "platform/jetsql/writing/StatementWriter.h"

#include <algorithm>
#include <utility>

#include "platform/jetsql/binding/BoundQuery.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// Longest statement that is written for SQLite, in bytes, and its maximum of parameters.
constexpr std::size_t kLongestWritten = 900'000;
constexpr std::size_t kMostParameters = 30'000;

}  // namespace

std::string checked(std::string text) {
  if (text.size() > kLongestWritten) throw error::tooComplex();
  return text;
}

std::string joined(const std::vector<std::string>& pieces, std::string_view between) {
  std::string all;
  for (const std::string& piece : pieces) {
    if (!all.empty()) all += between;
    all += piece;
  }
  return checked(std::move(all));
}

std::string sourceName(const Source& source) {
  return "t" + std::to_string(source.number);
}

std::string StatementWriter::column(const Source& source, int column) {
  used_[&source].columns.insert(column);
  return sourceName(source) + ".c" + std::to_string(column);
}

std::string StatementWriter::rowId(const Source& source, int column) {
  used_[&source].rows.insert(source.table != nullptr ? 0 : column);
  return sourceName(source) + ".r" + (source.table != nullptr ? "" : std::to_string(column));
}

void StatementWriter::addTable(const Source& source) {
  auto use = std::ranges::find(out_.tables, source.number, &TableUse::number);
  if (use == out_.tables.end()) {
    use = out_.tables.insert(use, {.number = source.number, .table = source.table});
  }
  const std::set<int>& columns = usedColumns(source).columns;
  use->columns = std::vector<jet::ColumnIndex>(columns.begin(), columns.end());
}

std::string StatementWriter::parameter(const std::u16string& text) {
  if (out_.parameters.size() >= kMostParameters) throw error::tooComplex();
  out_.parameters.push_back(text);
  return "?" + std::to_string(out_.parameters.size());
}

std::string StatementWriter::call(std::string_view function,
                                  const std::vector<std::string>& arguments) {
  if (function.starts_with("jet_")) out_.functions.emplace(function);
  return std::string(function) + "(" + joined(arguments, ", ") + ")";
}

}  // namespace jetsql
