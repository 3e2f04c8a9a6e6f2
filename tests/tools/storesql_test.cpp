#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "makestore/StoreBuilder.h"
#include "platform/jet/StoreFiles.h"
#include "support/ProgramFolder.h"

namespace {

namespace fs = std::filesystem;

struct Result {
  int status = -1;
  std::string out;
  std::string err;
};

std::string quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

class StoreSql : public testing::Test {
 protected:
  Result run(const std::vector<std::string>& words) const {
    std::string command = quoted(STORESQL_TOOL);
    for (const std::string& word : words) command += " " + quoted(word);
    Result result;
    const fs::path errors = folder_ / "err";
    result.out = jettest::outputOf(command + " 2>" + quoted(errors.string()), &result.status);
    result.err = support::readFile(errors).value();
    return result;
  }

  /// A store whose one table has a column of each kind, and rows with characters that need escapes.
  std::string oddStore() const {
    using jet::ColumnType;
    makestore::StoreBuilder builder;
    builder.password(u"secret");
    builder.table(u"Odd things")
        .column({.name = u"id"})
        .column(makestore::Column::text(u"words", 50))
        .column({.name = u"on", .type = ColumnType::Boolean})
        .column({.name = u"amount", .type = ColumnType::Currency})
        .column({.name = u"number", .type = ColumnType::Double})
        .column({.name = u"day", .type = ColumnType::DateTime})
        .column({.name = u"guid", .type = ColumnType::Guid})
        .column({.name = u"bytes", .type = ColumnType::Binary, .length = 20})
        .index(makestore::Index::primaryKey(u"id"))
        .row({std::int32_t{1}, u"a\tb\\c\r\nd", true, runtime::Currency{-12345}, 0.1,
              runtime::Date{38077.75}, runtime::Guid{{0xAB, 1, 2}}, runtime::Binary{0, 0xFE}})
        .row({std::int32_t{2}, u"", false, runtime::Currency{40000}, 1e22, runtime::Date{2},
              runtime::Null{}, runtime::Null{}})
        .row({std::int32_t{3}, u"\u20AC \u00E9", false, runtime::Null{}, -2.0, runtime::Null{},
              runtime::Null{}, runtime::Binary{}});
    const fs::path file = folder_ / "odd store.mdb";
    builder.write(file);
    return file.string();
  }

  jettest::Scratch scratch_;
  fs::path folder_ = scratch_.folder();
};

TEST_F(StoreSql, PrintsEveryKindOfValue) {
  const std::string store = oddStore();
  const Result got = run({"--password", "secret", store, "select * from [Odd things] order by id"});
  EXPECT_EQ(got.err, "");
  EXPECT_EQ(got.status, 0);
  EXPECT_EQ(got.out,
            "id\twords\ton\tamount\tnumber\tday\tguid\tbytes\n"
            "1\ta\\tb\\\\c\\r\\nd\t1\t-1.2345\t0.1\t2004-03-31 18:00:00\t"
            "{AB010200-0000-0000-0000-000000000000}\t00fe\n"
            "2\t\t0\t4.0000\t1e+22\t1900-01-01 00:00:00\t\\N\t\\N\n"
            "3\t\xE2\x82\xAC \xC3\xA9\t0\t\\N\t-2.0\t\\N\t\\N\t\n");
}

TEST_F(StoreSql, EndsWithTheErrorsNumberAndText) {
  const std::string store = oddStore();
  Result got = run({store, "select 1"});
  EXPECT_EQ(got.status, 1);
  EXPECT_EQ(got.err, "-2147217843: Not a valid password.\n");
  EXPECT_EQ(got.out, "");
  got = run({"--password", "secret", store, "select nothing from [Odd things]"});
  EXPECT_EQ(got.status, 1);
  EXPECT_EQ(got.err, "-2147217904: No value given for one or more required parameters.\n");
  EXPECT_EQ(run({"only one"}).status, 2);
  EXPECT_EQ(run({"--nonsense", store, "select 1"}).status, 2);
}

TEST_F(StoreSql, UpdatesTheFirstRowAndPrintsItAsStored) {
  const std::string store = oddStore();
  const std::vector<std::string> passwordOption{"--password", "secret"};
  const auto with = [&](std::vector<std::string> words) {
    words.insert(words.begin(), passwordOption.begin(), passwordOption.end());
    return run(words);
  };
  Result got = with({"--update", "words=x\\ty\\\\=1", "amount=2.5", "day=\\N", store,
                     "select id, words, amount, day from [Odd things] order by id"});
  EXPECT_EQ(got.err, "");
  EXPECT_EQ(got.out, "id\twords\tamount\tday\n1\tx\\ty\\\\=1\t2.5000\t\\N\n");
  got = with({"--update", "amount=much", store, "select amount from [Odd things] where id = 2"});
  EXPECT_EQ(got.status, 1);
  EXPECT_TRUE(got.err.starts_with("-2147217913: ")) << got.err;
  got = with({"--update", "amount=1", store, "select amount from [Odd things] where id = 9"});
  EXPECT_TRUE(got.err.starts_with("3021: ")) << got.err;
  got = with({"--update", "nothing", store, "select id from [Odd things]"});
  EXPECT_EQ(got.status, 1);
  got = with({store, "select words, amount, day from [Odd things] where id = 1"});
  EXPECT_EQ(got.out, "words\tamount\tday\nx\\ty\\\\=1\t2.5000\t\\N\n");
}

TEST_F(StoreSql, PrintsHowSqliteRunsAStatement) {
  const std::string store = oddStore();
  const Result got = run({"--password", "secret", "--plan", store,
                          "select words from [Odd things] where id > 1 and words = 'a'"});
  EXPECT_EQ(got.err, "");
  EXPECT_TRUE(got.out.starts_with("SELECT t")) << got.out;
  EXPECT_THAT(got.out, testing::EndsWith("\n?1 = a\nt1 = Odd things\n"
                                         "Odd things by PrimaryKey id>\n"));
  EXPECT_EQ(run({"--plan", "--update", "words=x", store, "select 1"}).status, 2);
}

TEST_F(StoreSql, RunsAScriptStepByStepUntilOneFails) {
  const std::string store = oddStore();
  const fs::path script = folder_ / "script.tsv";
  const std::string step = "select id, words from [Odd things] where id = ";
  std::ofstream(script) << step << "1\twords=one\n"
                        << step << "2\twords=two\\tand more\n"
                        << "select * from [Odd things]\n"
                        << step << "9\twords=nine\n"
                        << step << "3\twords=three\n";
  const Result got = run({"--password", "secret", "--script", script.string(), store});
  EXPECT_EQ(got.status, 1);
  EXPECT_EQ(got.out, "3\n");
  EXPECT_TRUE(got.err.starts_with("line 4: 3021: ")) << got.err;
  EXPECT_EQ(run({"--password", "secret", store, "select words from [Odd things] order by id"}).out,
            "words\none\ntwo\\tand more\n\xE2\x82\xAC \xC3\xA9\n");
}

/// The lines of a printed result; those after the names of the columns sorted.
std::vector<std::string> sortedLines(const std::string& text) {
  std::vector<std::string> all = jettest::split(text, '\n');
  if (!all.empty()) std::ranges::sort(all.begin() + 1, all.end());
  return all;
}

/// One field of each line, by its index from 0.
std::vector<std::string> fields(const std::string& text, std::size_t index) {
  std::vector<std::string> all;
  for (const std::string& line : jettest::split(text, '\n'))
    all.push_back(jettest::split(line + "\t", '\t').at(index));
  return all;
}

TEST_F(StoreSql, PrintsTheReferenceStoresAsExpected) {
  int compared = 0;
  for (const jettest::StoreFile& store : jettest::referenceStores())
    for (const auto& file : fs::directory_iterator(store.path.parent_path())) {
      const std::string name = file.path().stem().string();
      if (!name.starts_with("EXPECTED.")) continue;
      SCOPED_TRACE(file.path());
      const std::string object = name.substr(9);
      const bool isQuery = object.starts_with("qry");
      const Result got =
          run({store.path.string(),
               "select * from " + object + (isQuery ? " order by description" : " order by 1")});
      const std::string expected = support::readFile(file.path()).value();
      EXPECT_EQ(got.err, "");
      // A query's rows are in the order of their names, the second column; rows with equal names
      // are in any order.
      if (isQuery) {
        EXPECT_EQ(fields(got.out, 1), fields(expected, 1));
      }
      EXPECT_EQ(sortedLines(got.out), sortedLines(expected));
      ++compared;
    }
  EXPECT_GE(compared, 24);
}

}  // namespace
