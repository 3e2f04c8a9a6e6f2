#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/jet/StoreFiles.h"

namespace {

using namespace jettest;

/// All rows in the form of the independent checker's dump, which shows null as nothing.
std::vector<std::string> dumpedLines(const jet::Table& table) {
  std::vector<std::string> lines;
  const auto scan = table.scan();
  while (scan->next()) {
    std::string& line = lines.emplace_back();
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
      const runtime::Variant value = scan->row().value(jet::ColumnIndex(i));
      line.append(i > 0 ? "\t" : "").append(value.isNull() ? "" : printed(value));
    }
  }
  return lines;
}

template <class Use>
void forEachTable(Use use) {
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Database database(file.path, wide(file.path.string()), jet::Password{file.password});
    for (const jet::CatalogObject& object : objectsOf(file.path))
      if (object.kind == jet::ObjectKind::Table)
        use(file.path, narrow(object.name), database.table(object));
  }
}

TEST(Reading, AgreesWithAnIndependentReaderOnEveryTable) {
  std::map<std::string, std::vector<std::filesystem::path>> filesByTable;
  forEachTable([&](const auto& file, const std::string& name, const jet::Table&) {
    filesByTable[name].push_back(file);
  });
  std::map<std::string, std::map<std::filesystem::path, std::vector<std::string>>> dumps;
  for (const auto& [name, files] : filesByTable)
    dumps[name] = checkerLines("--dump '" + name + "'", files);
  int tables = 0;
  forEachTable([&](const auto& file, const std::string& name, const jet::Table& table) {
    SCOPED_TRACE(file.string() + " " + name);
    std::vector<std::string>& theirs = dumps[name][file];
    ASSERT_FALSE(theirs.empty());
    std::string names;
    for (const jet::ColumnDefinition& column : table.columns()) names += narrow(column.name) + "\t";
    EXPECT_EQ(names, theirs.front() + "\t");
    theirs.erase(theirs.begin());
    std::vector<std::string> ours = dumpedLines(table);
    EXPECT_EQ(table.rowCount(), ours.size());
    std::ranges::sort(ours);
    std::ranges::sort(theirs);
    EXPECT_EQ(ours, theirs);
    ++tables;
  });
  EXPECT_GE(tables, 70);
}

TEST(IndexWalk, ReturnsEachRowOnceAndFindsEachByItsKey) {
  std::ptrdiff_t seekable = 0;
  forEachTable([&](const auto& file, const std::string& name, const jet::Table& table) {
    SCOPED_TRACE(file.string() + " " + name);
    seekable += std::ranges::count_if(table.indexes(), &jet::Index::seekable);
    EXPECT_EQ(indexProblems(table), std::vector<std::string>());
  });
  EXPECT_GE(seekable, 120);
}

}  // namespace
