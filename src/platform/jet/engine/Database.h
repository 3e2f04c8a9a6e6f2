#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/jet/engine/ObjectCatalog.h"
#include "platform/jet/engine/RowChange.h"
#include "platform/jet/engine/Table.h"
#include "platform/jet/engine/ValidationRule.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/TextKey.h"

namespace jet {

/// The password by which a file is opened; empty for none.
struct Password {
  std::u16string_view text;
};

/// One session on a store database. It reads only the pages that are needed. The file is locked for
/// reading from its opening until a `Reading` or the session ends; after a `Reading`, the next read
/// locks it again. All members raise the general error where the file is damaged (with file, table
/// and page), and where another program holds its lock too long.
class Database {
 public:
  /// A read during which no other program writes, from its first page to its end. The lock is
  /// released at the end, also after a failure, so that a session that stays open, for example
  /// while a message waits for the user, doesn't block the updates of other programs.
  class Reading {
   public:
    explicit Reading(Database& database) : database_(database) {}
    ~Reading() { database_.release(); }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

   private:
    Database& database_;
  };

  /// Opens the file. `shownPath` is the path as the user knows it, for error texts. Raises the
  /// engine's errors for a missing file or folder, a file that is no database, one that another
  /// program holds exclusively or that can't be read, and a wrong password.
  Database(const std::filesystem::path& file, std::u16string_view shownPath, Password password);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  Version version() const;
  /// The sort order of all text in this file.
  TextOrder textOrder() const;

  /// The object of that name, ignoring letter case; absent when there is none.
  std::optional<CatalogObject> find(std::u16string_view name);

  /// The table's definition, read once under a lock. It is valid as long as that lock: until the
  /// end of a `Reading`, or until an update.
  const Table& table(const CatalogObject& object);
  /// The rows of a saved query, sorted by their attribute and, within it, by `Order`.
  std::vector<QueryRow> queryRows(const CatalogObject& object);

  /// Changes columns of one row and the indexes on them in one call: takes the exclusive lock,
  /// reads definition, rules and row afresh and compares them with what the caller had read,
  /// converts the values to the columns' types, checks, writes, reads the row again and unlocks.
  /// Returns what the columns of `asRead` hold now, in their order. Cursors, rows and tables from
  /// before must not be used after it. `holds` tests a validation rule on the new row.
  ///
  /// Raises the error of a changed row where the row, its table or a column isn't as it was read; a
  /// mismatch or "too large" for a value that doesn't fit its column; the general error for a null,
  /// an empty text or a duplicate that is forbidden, a broken rule, a file that is read-only,
  /// replaced or locked too long, and a change that can't be written safely. No lock is held then,
  /// and nothing is written; only a disk that fails during the writing may leave a part of the
  /// change in the file, and all rows stay readable.
  std::vector<runtime::Variant> update(const RowChange& change, const RuleTest& holds);

 private:
  struct Session;
  class Updating;

  void release() noexcept;

  std::unique_ptr<Session> session_;
};

}  // namespace jet
