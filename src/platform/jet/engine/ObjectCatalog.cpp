#include "platform/jet/engine/ObjectCatalog.h"

#include <algorithm>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
namespace {

/// Columns of a system table by name; a missing one is damage.
class Columns {
 public:
  explicit Columns(const Table& table) : table_(table) {}

  ColumnIndex operator[](std::u16string_view name) const {
    const std::optional<ColumnIndex> column = table_.columnNamed(name);
    if (!column)
      raiseDamaged(table_.source().location(table_.definitionPage()),
                   u"a system table lacks a column");
    return *column;
  }

 private:
  const Table& table_;
};

std::int32_t integerOf(const Row& row, ColumnIndex column) {
  std::int32_t number = 0;
  return row.integer(column, number) ? number : 0;
}

std::u16string textOf(const Row& row, ColumnIndex column) {
  std::u16string text;
  row.text(column, text);
  return text;
}

std::optional<ObjectKind> kindOf(std::int32_t type) {
  switch (static_cast<ObjectType>(type)) {
    case ObjectType::Table:
      return ObjectKind::Table;
    case ObjectType::Query:
      return ObjectKind::Query;
    case ObjectType::DatabaseLink:
    case ObjectType::FileLink:
      return ObjectKind::LinkedTable;
    case ObjectType::Database:
    case ObjectType::Container:
      break;
  }
  return std::nullopt;
}

/// Reads rows of MSysObjects.
struct ObjectRows {
  explicit ObjectRows(const Table& table) {
    const Columns columns(table);
    id = columns[ObjectColumn::kId];
    parent = columns[ObjectColumn::kParent];
    name = columns[ObjectColumn::kName];
    type = columns[ObjectColumn::kType];
  }

  /// The row's object; absent for containers, forms and all other objects without rows.
  std::optional<CatalogObject> read(const Row& row) const {
    if (ObjectId(integerOf(row, parent)) != kTablesContainer) return std::nullopt;
    CatalogObject object;
    const std::optional<ObjectKind> kind = kindOf(integerOf(row, type));
    if (!kind) return std::nullopt;
    object.kind = *kind;
    object.id = ObjectId(integerOf(row, id));
    object.name = textOf(row, name);
    return object;
  }

  ColumnIndex id, parent, name, type;
};

}  // namespace

ObjectCatalog::ObjectCatalog(Pager& pager) : pager_(pager) {}
ObjectCatalog::~ObjectCatalog() = default;

const Table& ObjectCatalog::objectsTable() {
  if (!objects_) objects_ = std::make_unique<Table>(pager_, u"MSysObjects", kObjectsPage);
  return *objects_;
}

std::optional<ObjectCatalog::FoundObject> ObjectCatalog::locate(std::u16string_view name) {
  const Table& table = objectsTable();
  const ObjectRows rows(table);
  const std::optional<IndexNumber> index =
      table.indexOn({ObjectColumn::kParent, ObjectColumn::kName});
  IndexRange range;
  range.equal = {kTablesContainer.value(), std::u16string(name)};
  std::unique_ptr<Cursor> cursor = index ? table.walk(*index, range) : table.scan();
  while (cursor->next()) {
    std::optional<CatalogObject> object = rows.read(cursor->row());
    if (object && sameName(object->name, name))
      return FoundObject{std::move(*object), std::move(cursor)};
  }
  return std::nullopt;
}

std::optional<CatalogObject> ObjectCatalog::find(std::u16string_view name) {
  std::optional<FoundObject> found = locate(name);
  if (!found) return std::nullopt;
  return std::move(found->object);
}

std::vector<CatalogObject> ObjectCatalog::objects() {
  const Table& table = objectsTable();
  const ObjectRows rows(table);
  std::vector<CatalogObject> objects;
  const std::unique_ptr<Cursor> cursor = table.scan();
  while (cursor->next())
    if (std::optional<CatalogObject> object = rows.read(cursor->row()))
      objects.push_back(std::move(*object));
  return objects;
}

std::vector<QueryRow> ObjectCatalog::queryRows(ObjectId query) {
  if (!queries_) queries_ = std::make_unique<Table>(pager_, u"MSysQueries", kQueriesPage);
  const Table& table = *queries_;
  const Columns columns(table);
  const ColumnIndex object = columns[QueryColumn::kObject];
  const ColumnIndex attribute = columns[QueryColumn::kAttribute];
  const ColumnIndex order = columns[QueryColumn::kOrder];
  const ColumnIndex name1 = columns[QueryColumn::kName1];
  const ColumnIndex name2 = columns[QueryColumn::kName2];
  const ColumnIndex expression = columns[QueryColumn::kExpression];
  const ColumnIndex flag = columns[QueryColumn::kFlag];

  struct Found {
    QueryRow row;
    runtime::Variant order;
  };
  std::vector<Found> found;
  const std::optional<IndexNumber> index =
      table.indexOn({QueryColumn::kObject, QueryColumn::kAttribute, QueryColumn::kOrder});
  IndexRange range;
  range.equal = {query.value()};
  const std::unique_ptr<Cursor> cursor = index ? table.walk(*index, range) : table.scan();
  while (cursor->next()) {
    const Row& row = cursor->row();
    if (row.isNull(object) || ObjectId(integerOf(row, object)) != query) continue;
    Found next;
    next.row.attribute = static_cast<QueryAttribute>(integerOf(row, attribute));
    next.row.name1 = textOf(row, name1);
    next.row.name2 = textOf(row, name2);
    next.row.expression = textOf(row, expression);
    next.row.flag = integerOf(row, flag);
    next.order = row.value(order);
    found.push_back(std::move(next));
  }
  const auto before = [](const Found& a, const Found& b) {
    if (a.row.attribute != b.row.attribute) return a.row.attribute < b.row.attribute;
    const auto* first = std::get_if<runtime::Binary>(&a.order.get());
    const auto* second = std::get_if<runtime::Binary>(&b.order.get());
    return first != nullptr && second != nullptr && *first < *second;
  };
  std::ranges::stable_sort(found, before);
  std::vector<QueryRow> result;
  result.reserve(found.size());
  for (Found& each : found) result.push_back(std::move(each.row));
  return result;
}

std::optional<std::vector<PropertyBlock>> ObjectCatalog::properties(const TableIdentity& table) {
  const std::optional<FoundObject> found = locate(table.name);
  if (!found || found->object.kind != ObjectKind::Table ||
      definitionPageOf(found->object.id) != table.definitionPage)
    return std::nullopt;
  const Row& row = found->at->row();
  const runtime::Variant blob = row.value(Columns(objectsTable())[ObjectColumn::kProperties]);
  if (blob.isNull()) return std::vector<PropertyBlock>();
  return decodeProperties(pager_.header().version, std::get<runtime::Binary>(blob.get()),
                          objectsTable().source().location(row.id().page));
}

void ObjectCatalog::forget() noexcept {
  objects_.reset();
  queries_.reset();
}

}  // namespace jet
