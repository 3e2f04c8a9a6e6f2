#include "platform/jet/CutEverywhere.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "platform/jet/WriteLog.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace jettest {
namespace {

namespace fs = std::filesystem;

using Lines = std::multiset<std::string>;

using Rows = std::map<jet::RowId, std::string>;

Rows rowsOf(const jet::Table& table) {
  Rows rows;
  const auto scan = table.scan();
  while (scan->next()) rows[scan->row().id()] = lineOf(scan->row(), table);
  return rows;
}

Lines exportOf(const fs::path& file, const std::u16string& table) {
  const std::string output = outputOf("mdb-export -H -R '\x1e' '" + file.string() + "' '" +
                                      narrow(table) + "' 2>/dev/null");
  const std::vector<std::string> lines = split(output, '\x1e');
  return {lines.begin(), lines.end()};
}

bool isBodyWithoutPointer(const std::string& problem) {
  return problem.find("has no pointer") != std::string::npos;
}

/// True for problems found by the checker that an interruption may cause: the row's second entry,
/// its second body, a page that is in the chain of leaves but not in the tree.
bool isLeftover(const std::string& problem, const Change& change) {
  const std::string row = printed(change.row);
  if (isBodyWithoutPointer(problem)) return true;
  const std::vector<std::string> kinds{" next is ",
                                       " previous is ",
                                       "last leaf has next",
                                       "first leaf has previous",
                                       "entries out of order",
                                       "starts before its",
                                       "reached twice",
                                       "has two entries",
                                       "row " + row + " key is",
                                       "null row " + row};
  return std::ranges::any_of(
      kinds, [&](const std::string& kind) { return problem.find(kind) != std::string::npos; });
}

/// The change back to the values that the row has now.
Change undoing(const fs::path& file, std::u16string_view password, Change change) {
  jet::Database database(file, u"the file", jet::Password{password});
  jet::RowReader reader = tableNamed(database, change.table).reader();
  EXPECT_TRUE(reader.find(change.row));
  for (jet::ColumnValue& each : change.values) each.value = reader.row().value(each.column);
  return change;
}

/// One change, and every state of the file that a power cut may leave.
class Cutting {
 public:
  Cutting(const Scratch& scratch, fs::path before, std::u16string password, Change change)
      : scratch_(scratch),
        before_(std::move(before)),
        password_(std::move(password)),
        change_(std::move(change)),
        undoing_(undoing(before_, password_, change_)) {}

  /// Returns the number of states.
  int run() {
    const fs::path complete = copied(before_, "complete.mdb");
    std::vector<SyncGroup> groups;
    {
      WriteLog log(complete);
      makeChange(complete, password_, change_);
      groups = log.groups();
    }
    rowsBefore_ = soundRows(before_);
    rowsAfter_ = soundRows(complete);
    exportBefore_ = exportOf(before_, change_.table);
    exportAfter_ = exportOf(complete, change_.table);
    std::string synced = support::readFile(before_).value();
    for (std::size_t i = 0; i < groups.size() && !testing::Test::HasFailure(); ++i) {
      for (const std::vector<std::size_t>& kept : subsetsOf(groups[i].size())) {
        SCOPED_TRACE("group " + std::to_string(i) + " of " + std::to_string(groups.size()) +
                     ", kept " + testing::PrintToString(kept) + " of " +
                     std::to_string(groups[i].size()));
        judge(withWrites(synced, groups[i], kept));
      }
      synced = withWrites(synced, groups[i], everyWrite(groups[i].size()));
    }
    judgeFiles();
    return static_cast<int>(states_.size());
  }

 private:
  fs::path copied(const fs::path& file, const std::string& name) const {
    const fs::path copy = scratch_.folder() / name;
    fs::copy_file(file, copy, fs::copy_options::overwrite_existing);
    return copy;
  }

  void judge(const std::string& bytes) {
    if (!states_.insert(hash_(bytes)).second) return;
    const std::string number = std::to_string(states_.size()) + ".mdb";
    const fs::path file = scratch_.folder() / ("cut" + number);
    support::writeFile(file, bytes);
    cutFiles_.push_back(file);
    const Rows rows = soundRows(file);
    EXPECT_TRUE(rows == rowsBefore_ || rows == rowsAfter_);
    judgeExport(file, {exportBefore_, exportAfter_});
    changeOthers(copied(file, "others.mdb"), rows);

    const fs::path again = copied(file, "again" + number);
    makeChange(again, password_, change_);
    if (!finishedStates_.insert(hash_(support::readFile(again).value())).second) return;
    finishedFiles_.push_back(again);
    EXPECT_EQ(soundRows(again), rowsAfter_);
    judgeExport(again, {exportAfter_});
  }

  /// The independent checker's verdict on all states, before and after the repeated change.
  void judgeFiles() const {
    std::vector<fs::path> files = cutFiles_;
    files.insert(files.end(), finishedFiles_.begin(), finishedFiles_.end());
    auto verdicts = checkerLines("", files);
    EXPECT_EQ(verdicts.size(), files.size());
    for (const fs::path& file : cutFiles_)
      for (const std::string& line : verdicts[file])
        EXPECT_TRUE(line == "sound" || isLeftover(line, change_)) << file << line;
    for (const fs::path& file : finishedFiles_)
      for (const std::string& line : verdicts[file])
        EXPECT_TRUE(line == "sound" || isBodyWithoutPointer(line)) << file << line;
  }

  /// The exporter ignores pointers and lists bodies at their own positions: a body without pointer
  /// shows as a second copy of the row.
  void judgeExport(const fs::path& file, const std::vector<Lines>& allowed) const {
    const Lines lines = exportOf(file, change_.table);
    EXPECT_TRUE(std::ranges::any_of(
        allowed, [&](const Lines& wanted) { return std::ranges::includes(lines, wanted); }));
    EXPECT_LE(lines.size(), exportBefore_.size() + 1);
  }

  /// The rows of the changed table, whose indexes must be sound.
  Rows soundRows(const fs::path& file) const {
    SCOPED_TRACE(file.filename().string());
    jet::Database database(file, u"the file", jet::Password{password_});
    const jet::Table& table = tableNamed(database, change_.table);
    EXPECT_EQ(indexProblems(table), std::vector<std::string>());
    return rowsOf(table);
  }

  /// Sets other rows to the old and the new values of the interrupted change, so that their index
  /// entries are next to those of the changed row.
  void changeOthers(const fs::path& file, const Rows& expected) const {
    for (const Change& values : {undoing_, change_}) {
      int changed = 0;
      for (const auto& [id, line] : expected) {
        if (id == change_.row || changed == 2) continue;
        Change other = values;
        other.row = id;
        if (support::errorNumberOf([&] { makeChange(file, password_, other); }) == 0) ++changed;
      }
    }
    EXPECT_EQ(soundRows(file).size(), expected.size());
  }

  const Scratch& scratch_;
  fs::path before_;
  std::u16string password_;
  Change change_;
  Change undoing_;
  std::hash<std::string> hash_;
  std::set<std::size_t> states_;          ///< hashes of the cut files judged
  std::set<std::size_t> finishedStates_;  ///< hashes of the files after the repeated change
  std::vector<fs::path> cutFiles_;
  std::vector<fs::path> finishedFiles_;
  Rows rowsBefore_;
  Rows rowsAfter_;
  Lines exportBefore_;
  Lines exportAfter_;
};

}  // namespace

int cutEverywhere(const Scratch& scratch, const fs::path& before, const std::u16string& password,
                  const Change& change) {
  return Cutting(scratch, before, password, change).run();
}

}  // namespace jettest
