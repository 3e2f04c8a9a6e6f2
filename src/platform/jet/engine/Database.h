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

/// One session on a store database. While it lives it holds the file's shared lock; only the pages
/// that are asked for are read. Errors of all members: -2147467259 with the file, table and page
/// where the file is damaged.
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
  /// and takes the shared lock again. Cursors and rows from before an update must not be used
  /// after. Values are converted to the columns' types. Nothing is written when it raises:
  /// -2147217864 the row was changed or is gone; -2147217913 a value can't be converted;
  /// -2147217833 a text or number is too large; -2147467259 a null or empty text is forbidden, the
  /// value is a duplicate, the file is read-only or locked too long, or the change can't be written
  /// safely. A disk that fails in the middle leaves all old rows readable.
  void update(const Table& table, RowId row, std::span<const ColumnValue> changes,
              std::span<const ColumnValue> asRead);

 private:
  struct Session;
  std::unique_ptr<Session> session_;
};

}  // namespace jet
