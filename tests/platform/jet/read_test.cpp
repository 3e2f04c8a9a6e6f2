#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

#include "platform/jet/StoreFiles.h"
#include "platform/runtime/RunTimeError.h"

namespace {

using namespace jettest;
namespace fs = std::filesystem;

std::vector<std::string> linesOfFile(const fs::path& file) {
  std::ifstream in(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string headerOf(const jet::Table& table) {
  std::string line;
  for (const jet::Column& column : table.columns())
    line.append(line.empty() ? "" : "\t").append(narrow(column.name));
  return line;
}

TEST(Reading, ReturnsEveryTableOfTheReferenceStoresAsExpected) {
  int tables = 0;
  for (const StoreFile& store : referenceStores()) {
    jet::Database database(store.path, wide(store.path.string()), jet::Password{store.password});
    for (const fs::directory_entry& entry : fs::directory_iterator(store.path.parent_path())) {
      const std::string name = entry.path().filename();
      if (!name.starts_with("EXPECTED.tbl")) continue;
      SCOPED_TRACE(entry.path());
      const jet::Table& table =
          tableNamed(database, wide(entry.path().stem().extension().string().substr(1)));
      std::vector<std::string> expected = linesOfFile(entry.path());
      EXPECT_EQ(headerOf(table), expected.at(0));
      expected.erase(expected.begin());
      std::vector<std::string> rows = linesOf(table);
      EXPECT_EQ(table.rowCount(), rows.size());
      std::ranges::sort(expected);
      std::ranges::sort(rows);
      EXPECT_EQ(rows, expected);
      ++tables;
    }
  }
  EXPECT_GE(tables, 19);
}

// Texts of the corpus hold every control character, but not these.
constexpr char kField[] = "\x1f|\x1f";
constexpr char kLine[] = "\x1e|\x1e";

std::vector<std::string> pieces(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t at = 0;
  for (std::size_t end = 0; (end = text.find(separator, at)) != std::string::npos;
       at = end + separator.size())
    parts.push_back(text.substr(at, end - at));
  return parts;
}

std::string fromHex(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
    bytes.push_back(static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  return bytes;
}

/// A field in a form that our output and the independent exporter's have in common: the exporter
/// shows an empty text as null, a GUID without its last hyphen, and rounds numbers to fewer digits.
std::string inOneSpelling(const jet::Column& column, std::string field) {
  const auto rounded = [&](int digits) {
    std::array<char, 64> text{};
    if (field == "\\N") return field;
    std::snprintf(text.data(), text.size(), "%.*g", digits, std::stod(field));
    return std::string(text.data());
  };
  switch (column.type) {
    case jet::ColumnType::Single:
      return rounded(5);
    case jet::ColumnType::Double:
    case jet::ColumnType::Numeric:
      return rounded(12);
    case jet::ColumnType::Currency:
      return rounded(15);
    case jet::ColumnType::Guid:
      if (field.starts_with("7B")) field = fromHex(field);
      std::erase(field, '-');
      return field;
    case jet::ColumnType::Binary:
    case jet::ColumnType::Block:
      return {};  // the exporter leaves most of these out
    case jet::ColumnType::DateTime:
      // The exporter's dates begin in 1900 and end in 9998; all others become one of these.
      return field >= "9999" || field < "1900-01-01" ? "beyond its dates" : field;
    case jet::ColumnType::Text:
    case jet::ColumnType::Memo:
      field.resize(std::min(field.find('\0'), field.size()));
      return field.empty() ? "\\N" : field;
    case jet::ColumnType::Boolean:
    case jet::ColumnType::Byte:
    case jet::ColumnType::Integer:
    case jet::ColumnType::Long:
    case jet::ColumnType::Ole:
      break;
  }
  std::ranges::transform(field, field.begin(), [](unsigned char c) { return std::tolower(c); });
  return field;
}

std::string rawText(const runtime::Variant& value) {
  const auto* text = std::get_if<std::u16string>(&value.get());
  return text != nullptr ? narrow(*text) : printed(value);
}

TEST(Reading, AgreesWithAnIndependentExporterOnEveryTable) {
  int tables = 0;
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Database database(file.path, wide(file.path.string()), jet::Password{file.password});
    for (const jet::CatalogObject& object : objectsOf(file.path)) {
      if (object.kind != jet::ObjectKind::Table) continue;
      SCOPED_TRACE(file.path.string() + " " + narrow(object.name));
      const std::string output = outputOf(
          "mdb-export -H -Q -b hex -0 '\\N' -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' -d '" +
          std::string(kField) + "' -R '" + kLine + "' '" + file.path.string() + "' '" +
          narrow(object.name) + "' 2>/dev/null");
      const jet::Table& table = database.table(object);
      // The exporter lists the body of a moved row at the body's position: the rows are compared as
      // a set.
      std::vector<std::string> ours;
      const auto cursor = table.scan();
      while (cursor->next()) {
        std::string line;
        for (std::size_t i = 0; i < table.columns().size(); ++i)
          line += kField + inOneSpelling(table.columns()[i],
                                         rawText(cursor->row().value(jet::ColumnIndex(i))));
        ours.push_back(line);
      }
      std::vector<std::string> theirs;
      for (const std::string& exported : pieces(output, kLine)) {
        const std::vector<std::string> fields = pieces(exported + kField, kField);
        ASSERT_EQ(fields.size(), table.columns().size());
        std::string line;
        for (std::size_t i = 0; i < fields.size(); ++i)
          line += kField + inOneSpelling(table.columns()[i], fields[i]);
        theirs.push_back(line);
      }
      std::ranges::sort(ours);
      std::ranges::sort(theirs);
      EXPECT_EQ(ours, theirs);
      ++tables;
    }
  }
  EXPECT_GE(tables, 70);
}

/// All rows in the form of the independent checker's dump, which shows null as nothing.
std::vector<std::string> dumpedLines(const jet::Table& table) {
  std::vector<std::string> lines = linesOf(table);
  for (std::string& line : lines) {
    std::string dumped;
    for (const std::string& field : pieces(line + "\t", "\t"))
      dumped.append(field == "\\N" ? "" : field).push_back('\t');
    dumped.pop_back();
    line = dumped;
  }
  return lines;
}

TEST(Reading, AgreesWithAnIndependentDumpWhereTheExporterIsIncomplete) {
  int tables = 0;
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Database database(file.path, wide(file.path.string()), jet::Password{file.password});
    for (const jet::CatalogObject& object : objectsOf(file.path)) {
      const bool binary =
          object.kind == jet::ObjectKind::Table &&
          std::ranges::any_of(database.table(object).columns(), [](const auto& column) {
            return column.type == jet::ColumnType::Binary ||
                   column.type == jet::ColumnType::DateTime ||
                   column.type == jet::ColumnType::Block || column.type == jet::ColumnType::Numeric;
          });
      if (!binary) continue;
      SCOPED_TRACE(file.path.string() + " " + narrow(object.name));
      std::vector<std::string> theirs =
          split(checkerOutput("--dump '" + narrow(object.name) + "'", file.path), '\n');
      theirs.erase(theirs.begin());
      std::vector<std::string> ours = dumpedLines(database.table(object));
      std::ranges::sort(ours);
      std::ranges::sort(theirs);
      EXPECT_EQ(ours, theirs);
      ++tables;
    }
  }
  EXPECT_GE(tables, 30);
}

}  // namespace
