#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jet/engine/TableIdentity.h"
#include "platform/jet/format/ObjectRow.h"
#include "platform/jet/format/PropertyBlob.h"
#include "platform/jet/format/QueryRow.h"

namespace jet {

/// The kinds of objects that can be a source of rows.
enum class ObjectKind : std::uint8_t { Table, Query, LinkedTable };

/// A table, saved query or linked table in the file's object list.
struct CatalogObject {
  ObjectKind kind = ObjectKind::Table;
  ObjectId id;
  std::u16string name;
};

/// Reads the file's system tables, which describe its objects, saved queries and columns. Each
/// system table is read when it is needed.
class ObjectCatalog {
 public:
  explicit ObjectCatalog(Pager& pager);
  ~ObjectCatalog();
  ObjectCatalog(const ObjectCatalog&) = delete;
  ObjectCatalog& operator=(const ObjectCatalog&) = delete;

  /// The object of that name, ignoring letter case; absent when there is none.
  std::optional<CatalogObject> find(std::u16string_view name);
  /// All tables, saved queries and linked tables, in the order of the object list.
  std::vector<CatalogObject> objects();
  /// The rows of the saved query, sorted by their attribute and, within it, by `Order`.
  std::vector<QueryRow> queryRows(ObjectId query);
  /// The properties of a table and of its columns; absent when the object list has no such table.
  std::optional<std::vector<PropertyBlock>> properties(const TableIdentity& table);
  /// Forgets the definitions of the system tables.
  void forget() noexcept;

 private:
  /// An object, and the cursor on its row.
  struct FoundObject {
    CatalogObject object;
    std::unique_ptr<Cursor> at;
  };
  std::optional<FoundObject> locate(std::u16string_view name);
  const Table& objectsTable();

  Pager& pager_;
  std::unique_ptr<Table> objects_;
  std::unique_ptr<Table> queries_;
};

}  // namespace jet
