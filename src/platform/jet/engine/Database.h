#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/jet/engine/Catalog.h"
#include "platform/jet/engine/ColumnValue.h"
#include "platform/jet/engine/Table.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/TextKey.h"

namespace jet {

/// One session on a store database. Only the pages that are asked for are read. The file's shared
/// lock is held from the opening, and from any later read, to the end of a `Reading` or of the
/// session. Errors of all members: -2147467259 with the file, table and page where the file is
/// damaged, or for a file that another program holds too long.
class Database {
 public:
  /// Opens the file. `shownPath` is the path as the user knows it, for the engine's words.
  /// Raises, with the engine's words: -2147467259 for a missing file, a missing folder, a file that
  /// is no database, one that another program holds exclusively or that can't be read; -2147217843
  /// for a wrong password.
  Database(const std::filesystem::path& file, std::u16string_view shownPath,
           std::u16string_view password);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  Version version() const;
  /// The order of all text in this file.
  TextOrder textOrder() const;
  /// True where the file or its folder forbids writing: `update` is refused.
  bool isReadOnly() const;

  /// The object of that name, letter case aside; absent when there is none.
  std::optional<CatalogObject> find(std::u16string_view name);
  /// All tables, saved queries and linked tables, in the order of the object list.
  std::vector<CatalogObject> objects();

  /// The table's definition, read once a session; it lives as long as the database.
  const Table& table(const CatalogObject& object);
  /// The rows of a saved query, in the order of their attribute and their number in it.
  std::vector<QueryRow> queryRows(const CatalogObject& object);

  /// Changes columns of one row, with every index of the table. Takes the exclusive lock, reads the
  /// row afresh and compares it with `asRead`, the values that the caller read before; then writes
  /// and goes back to the shared lock. Cursors and rows from before an update must not be used
  /// after. Values are converted to the columns' types. Nothing is written, and no lock is held,
  /// when it raises: -2147217864 the row was changed or is gone; -2147217913 a value can't be
  /// converted; -2147217833 a text or number is too large; -2147467259 a null or empty text is
  /// forbidden, the value is a duplicate, the file is read-only or locked too long, or the change
  /// can't be written safely. A disk that fails in the middle leaves all old rows readable.
  void update(const Table& table, RowId row, std::span<const ColumnValue> changes,
              std::span<const ColumnValue> asRead);

 private:
  friend class Reading;
  struct Session;
  std::unique_ptr<Session> session_;
};

/// What is read as a whole: no other program writes from the first page of it to its end. The lock
/// is given up then, also when it fails: a session may stay open while the user has a message to
/// answer, and must not keep other programs from their updates so long.
class Reading {
 public:
  explicit Reading(Database& database) : database_(database) {}
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

 private:
  Database& database_;
};

}  // namespace jet
