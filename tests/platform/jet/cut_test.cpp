// A change is cut after each of its page writes: nothing may be lost, and making it again has to
// leave the row clean.

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/IndexPage.h"
#include "support/FileFaults.h"

namespace {

namespace fs = std::filesystem;
using namespace jettest;

/// What a change may do to the file's shape.
struct Shape {
  std::optional<jet::RowPointer> body;  ///< where the row's slot points
  std::map<std::pair<std::u16string, std::size_t>, std::pair<int, int>>
      indexes;  ///< levels, leaves
};

std::pair<int, int> levelsAndLeaves(const jet::TableSource& source, std::uint32_t root) {
  const auto view = [&](std::uint32_t number) {
    return jet::IndexPage::decode(source.pager.layout(), *source.pager.read(number, {}), {});
  };
  jet::IndexPage page = view(root);
  const int levels = page.level;
  while (!page.leaf) page = view(page.entries.empty() ? page.tail : page.entries[0].child);
  int leaves = 1;
  for (; page.next != 0; ++leaves) page = view(page.next);
  return {levels, leaves};
}

Shape shapeOf(const fs::path& file, std::u16string_view password, const Change& change) {
  jet::Database database(file, u"the file", password);
  const jet::TableSource& source = tableNamed(database, change.table).source();
  Shape shape;
  const auto page = source.pager.read(change.row.page, {});
  const jet::DataPage rows(source.pager.layout(), *page, {});
  const jet::Slot slot = rows.slot(change.row.slot);
  if (slot.pointer) shape.body = jet::RowPointer::unpack(jet::u32At(rows.bytes(slot), 0));
  for (std::size_t i = 0; i < source.definition.indexes.size(); ++i)
    shape.indexes[{change.table, i}] = levelsAndLeaves(source, source.definition.indexes[i].root);
  return shape;
}

std::set<std::string> kindsOf(const Shape& before, const Shape& after) {
  std::set<std::string> kinds;
  if (!before.body && !after.body) kinds.insert("in place");
  if (!before.body && after.body) kinds.insert("moved");
  if (before.body && after.body && before.body != after.body) kinds.insert("moved again");
  if (before.body && !after.body) kinds.insert("came home");
  for (const auto& [index, was] : before.indexes) {
    const auto is = after.indexes.at(index);
    if (is.first > was.first) kinds.insert("root grown");
    if (is.first == was.first && is.second > was.second) kinds.insert("leaf split");
    if (is.second < was.second) kinds.insert("leaf unlinked");
  }
  return kinds;
}

using Lines = std::multiset<std::string>;

std::map<jet::RowId, std::string> rowsOf(const fs::path& file, std::u16string_view password,
                                         std::u16string_view name) {
  jet::Database database(file, u"the file", password);
  const jet::Table& table = tableNamed(database, name);
  std::map<jet::RowId, std::string> rows;
  const auto scan = table.scan();
  while (scan->next()) {
    std::string& line = rows[scan->row().id()];
    for (int i = 0; i < static_cast<int>(table.columns().size()); ++i)
      line += printed(scan->row().value(i)) + "\t";
  }
  return rows;
}

Lines exportOf(const fs::path& file, const std::u16string& table) {
  const std::string output = outputOf("mdb-export -H -R '\x1e' '" + file.string() + "' '" +
                                      narrow(table) + "' 2>/dev/null");
  const std::vector<std::string> lines = split(output, '\x1e');
  return {lines.begin(), lines.end()};
}

/// Complaints of the checker that a cut may leave: about the row's second entry, its second body, a
/// page that is in the chain of leaves but not in the tree.
bool isLeftover(const std::string& complaint, const Change& change) {
  const std::string row = std::to_string(change.row.page) + "/" + std::to_string(change.row.slot);
  const std::vector<std::string> kinds{
      "has no pointer",     " next is ",           " prev is ",
      "last leaf has next", "first leaf has prev", "entries out of order",
      "starts before its",  "has two entries",     "row " + row + " key is",
      "null row " + row};
  return std::ranges::any_of(
      kinds, [&](const std::string& kind) { return complaint.find(kind) != std::string::npos; });
}

/// One change, cut everywhere.
class Cutting {
 public:
  Cutting(const Scratch& scratch, fs::path before, std::u16string password, Change change)
      : scratch_(scratch),
        before_(std::move(before)),
        password_(std::move(password)),
        change_(std::move(change)) {}

  /// Gives the number of cuts.
  int run() {
    const fs::path whole = fresh("whole.mdb");
    int steps = 0;
    {
      support::FileFaults faults;
      faults.cutAtChange(1 << 20);
      makeChange(whole, password_, change_);
      steps = faults.changes();
    }
    rowsBefore_ = rowsOf(before_, password_, change_.table);
    rowsAfter_ = rowsOf(whole, password_, change_.table);
    exportBefore_ = exportOf(before_, change_.table);
    exportAfter_ = exportOf(whole, change_.table);
    for (int step = 0; step < steps; ++step) {
      SCOPED_TRACE("cut at step " + std::to_string(step) + " of " + std::to_string(steps));
      cutAt(step);
      if (testing::Test::HasFailure()) break;
    }
    judgeFiles();
    return steps;
  }

 private:
  fs::path fresh(const std::string& name) const {
    const fs::path file = scratch_.folder() / name;
    fs::copy_file(before_, file, fs::copy_options::overwrite_existing);
    return file;
  }
  static fs::path copied(const fs::path& file, const std::string& name) {
    const fs::path copy = file.parent_path() / name;
    fs::copy_file(file, copy, fs::copy_options::overwrite_existing);
    return copy;
  }

  void cutAt(int step) {
    const std::string number = std::to_string(step) + ".mdb";
    const fs::path file = fresh("cut" + number);
    cutFiles_.push_back(file);
    {
      support::FileFaults faults;
      faults.cutAtChange(step);
      EXPECT_NE(support::errorNumberOf([&] { makeChange(file, password_, change_); }), 0);
    }
    const auto rows = rowsOf(file, password_, change_.table);
    EXPECT_TRUE(rows == rowsBefore_ || rows == rowsAfter_);
    judgeExport(file);
    judgeIndexes(file);
    changeAnother(copied(file, "another.mdb"), rows);

    const fs::path again = copied(file, "again" + number);
    finishedFiles_.push_back(again);
    makeChange(again, password_, change_);
    EXPECT_EQ(rowsOf(again, password_, change_.table), rowsAfter_);
    EXPECT_EQ(exportOf(again, change_.table), exportAfter_);
    judgeIndexes(again);
  }

  /// The independent checker's word on all files that the cuts left.
  void judgeFiles() const {
    std::vector<fs::path> files = cutFiles_;
    files.insert(files.end(), finishedFiles_.begin(), finishedFiles_.end());
    auto verdicts = checkerVerdicts(files);
    EXPECT_EQ(verdicts.size(), files.size());
    for (const fs::path& file : cutFiles_)
      for (const std::string& complaint : verdicts[file])
        EXPECT_TRUE(complaint == "ok" || isLeftover(complaint, change_)) << file << complaint;
    for (const fs::path& file : finishedFiles_)
      EXPECT_EQ(verdicts[file], std::vector<std::string>{"ok"}) << file;
  }

  /// The other reader passes over pointers and lists bodies where they lie: a body too many shows
  /// as a second copy of the row.
  void judgeExport(const fs::path& file) const {
    Lines missing;
    const Lines lines = exportOf(file, change_.table);
    std::ranges::set_difference(exportBefore_, lines, std::inserter(missing, missing.end()));
    Lines missingNew;
    std::ranges::set_difference(exportAfter_, lines, std::inserter(missingNew, missingNew.end()));
    EXPECT_TRUE(missing.empty() || missingNew.empty());
    EXPECT_LE(lines.size(), exportBefore_.size() + 1);
  }

  void judgeIndexes(const fs::path& file) const {
    jet::Database database(file, u"the file", password_);
    EXPECT_EQ(indexProblems(tableNamed(database, change_.table)), std::vector<std::string>());
  }

  /// Gives other rows the values of the interrupted change, so that their entries come near its.
  void changeAnother(const fs::path& file, std::map<jet::RowId, std::string> expected) const {
    int changed = 0;
    for (const auto& [id, line] : expected) {
      if (id == change_.row || changed == 2) continue;
      Change other = change_;
      other.row = id;
      if (support::errorNumberOf([&] { makeChange(file, password_, other); }) == 0) ++changed;
    }
    EXPECT_EQ(rowsOf(file, password_, change_.table).size(), expected.size());
    judgeIndexes(file);
  }

  const Scratch& scratch_;
  fs::path before_;
  std::u16string password_;
  Change change_;
  std::vector<fs::path> cutFiles_;
  std::vector<fs::path> finishedFiles_;
  std::map<jet::RowId, std::string> rowsBefore_;
  std::map<jet::RowId, std::string> rowsAfter_;
  Lines exportBefore_;
  Lines exportAfter_;
};

/// Changes that empty an index's leaves one after the other.
std::vector<Change> emptying(const fs::path& file, std::u16string_view password,
                             const std::u16string& name) {
  jet::Database database(file, u"the file", password);
  const jet::Table& table = tableNamed(database, name);
  std::vector<Change> changes;
  for (std::size_t i = 0; i < table.indexes().size(); ++i) {
    const jet::Index& index = table.indexes()[i];
    if (index.unique ||
        table.columns()[static_cast<std::size_t>(index.columns[0].column)].autonumber)
      continue;
    const auto walk = table.walk(static_cast<int>(i), {});
    while (walk->next())
      changes.push_back({name, walk->row().id(), {{index.columns[0].column, runtime::Null{}}}});
  }
  return changes;
}

/// Looks for changes of every kind among many, and cuts the first ones of each kind.
class Hunt {
 public:
  Hunt(const StoreFile& store, std::set<std::string> missing, std::uint32_t seed)
      : password_(store.password),
        file_(scratch_.copy(store.path)),
        generator_(seed),
        missing_(std::move(missing)) {}

  /// Changes texts of one table to and fro between short and long ones.
  void byTexts(const std::u16string& table, int tries) {
    std::vector<jet::RowId> rows;
    for (const auto& [id, line] : rowsOf(file_, password_, table)) rows.push_back(id);
    std::vector<int> columns;
    std::vector<std::size_t> sizes;
    {
      jet::Database database(file_, u"the file", password_);
      const std::vector<jet::Column>& all = tableNamed(database, table).columns();
      const std::size_t unit = database.version() == jet::Version::Jet3 ? 1 : 2;
      for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].type != jet::ColumnType::Text) continue;
        columns.push_back(static_cast<int>(i));
        sizes.push_back(all[i].size / unit);
      }
    }
    const std::set<std::string> left{"leaf unlinked"};  // for the emptying
    for (; tries > 0 && missing_ != left; --tries) {
      const std::size_t which = generator_() % columns.size();
      const std::size_t least = generator_() % 3 == 0 ? 0 : sizes[which] * 3 / 4;
      std::u16string text;
      while (text.size() < sizes[which] && (text.size() < least || generator_() % 8 != 0))
        text.push_back(u"abcdefghijklmnopqrstuvwxyz\u00e9\u00f1-'"[generator_() % 30]);
      tryOut({table, rows[generator_() % rows.size()], {{columns[which], text}}});
    }
  }

  void byEmptying(const std::u16string& table) {
    for (const Change& change : emptying(file_, password_, table)) tryOut(change);
  }

  /// The kinds of changes that weren't met.
  const std::set<std::string>& missing() const { return missing_; }
  int cuts() const { return cuts_; }

 private:
  void tryOut(const Change& change) {
    if (testing::Test::HasFailure() || missing_.empty()) return;
    const fs::path before = scratch_.folder() / "before.mdb";
    fs::copy_file(file_, before, fs::copy_options::overwrite_existing);
    const Shape was = shapeOf(file_, password_, change);
    if (support::errorNumberOf([&] { makeChange(file_, password_, change); }) != 0) return;
    const std::set<std::string> kinds = kindsOf(was, shapeOf(file_, password_, change));
    std::string label;
    for (const std::string& kind : kinds)
      if (missing_.erase(kind) > 0) label += kind + " ";
    if (label.empty()) return;
    SCOPED_TRACE(label);
    cuts_ += Cutting(scratch_, before, password_, change).run();
  }

  Scratch scratch_;
  std::u16string password_;
  fs::path file_;
  std::mt19937 generator_;
  std::set<std::string> missing_;
  int cuts_ = 0;
};

const std::set<std::string> kAllKinds{"in place",   "moved",      "moved again",  "came home",
                                      "leaf split", "root grown", "leaf unlinked"};

StoreFile named(const std::vector<StoreFile>& files, std::string_view part) {
  for (const StoreFile& file : files)
    if (file.path.string().find(part) != std::string::npos) return file;
  return {};
}

/// Hunts through the tables of files until changes of all kinds were cut.
void cutAllKinds(const std::vector<std::pair<StoreFile, std::u16string>>& tables) {
  std::set<std::string> missing = kAllKinds;
  int cuts = 0;
  for (const auto& [file, table] : tables) {
    Hunt hunt(file, missing, 3);
    hunt.byTexts(table, 1500);
    hunt.byEmptying(table);
    missing = hunt.missing();
    cuts += hunt.cuts();
  }
  EXPECT_EQ(missing, std::set<std::string>());
  EXPECT_GT(cuts, 50);
}

TEST(CutUpdate, LosesNothingInAJet4Store) {
  if (referenceStores().empty() || !hasChecker()) GTEST_SKIP() << "no reference data";
  cutAllKinds({{named(referenceStores(), "tight/"), u"tblStock"}});
}

TEST(CutUpdate, LosesNothingInAJet3File) {
  if (corpusFiles().empty() || !hasChecker()) GTEST_SKIP() << "no reference data";
  cutAllKinds({{named(corpusFiles(), "compIndexTestV1997"), u"Table1"},
               {named(corpusFiles(), "nwind"), u"Products"}});
}

}  // namespace
