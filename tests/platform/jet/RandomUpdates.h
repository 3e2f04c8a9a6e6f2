#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "platform/jet/engine/Database.h"

namespace jettest {

/// A change of one row.
struct Change {
  std::u16string table;
  jet::RowId row;
  std::vector<jet::ColumnValue> values;
};

/// Makes the change in a session of its own.
void makeChange(const std::filesystem::path& file, std::u16string_view password,
                const Change& change);

/// Changes random columns of random rows of a database file, and keeps the expected rows.
class RandomUpdates {
 public:
  RandomUpdates(std::filesystem::path file, std::u16string password, std::uint32_t seed);

  /// The next random change.
  Change next(jet::Database& database);
  /// Makes a change; false where the engine refuses it.
  bool make(jet::Database& database, const Change& change);
  /// Makes that many changes, refused ones not counted, in one session.
  void run(int count);
  /// The problems of the file: rows that differ from the model, rows that an index doesn't find or
  /// finds by another row's key, and those that the independent checker reports. Empty when sound.
  std::vector<std::string> problems() const;

  int made() const { return made_; }
  /// Changes that the engine refused, by the number of the error.
  const std::map<int, int>& refused() const { return refused_; }

 private:
  using Values = std::vector<std::string>;
  struct TableModel {
    std::u16string name;
    std::map<jet::RowId, Values> rows;
    std::vector<jet::RowId> ids;
  };

  runtime::Variant randomValue(const jet::ColumnDefinition& column, jet::Version version);
  std::u16string randomText(std::size_t most);
  int random(int below);

  std::filesystem::path file_;
  std::u16string password_;
  std::mt19937 generator_;
  std::vector<TableModel> tables_;
  int made_ = 0;
  std::map<int, int> refused_;
};

}  // namespace jettest
