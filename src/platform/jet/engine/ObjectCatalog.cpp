#include "platform/jet/engine/ObjectCatalog.h"

#include <algorithm>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
namespace {

/// Tables and saved queries are children of the container with this id.
constexpr std::int32_t kTablesContainer = 0x0F000001;

/// Columns of a system table by name; a missing one is damage.
class Columns {
 public:
  explicit Columns(const Table& table) : table_(table) {}

  int operator[](std::u16string_view name) const {
    const std::optional<int> column = table_.columnNamed(name);
    if (!column)
      raiseDamaged(table_.source().place(table_.definitionPage()),
                   u"a system table lacks a column");
    return *column;
  }

 private:
  const Table& table_;
};

std::int32_t integerOf(const Row& row, int column) {
  std::int32_t number = 0;
  return row.integer(column, number) ? number : 0;
}

std::u16string textOf(const Row& row, int column) {
  std::u16string text;
  row.text(column, text);
  return text;
}

/// Reads rows of MSysObjects.
struct ObjectRows {
  explicit ObjectRows(const Table& table) {
    const Columns columns(table);
    id = columns[u"Id"];
    parent = columns[u"ParentId"];
    name = columns[u"Name"];
    type = columns[u"Type"];
    flags = columns[u"Flags"];
  }

  /// The row's object; absent for containers, forms and all other objects without rows.
  std::optional<CatalogObject> read(const Row& row) const {
    if (integerOf(row, parent) != kTablesContainer) return std::nullopt;
    CatalogObject object;
    switch (integerOf(row, type)) {
      case 1:
        object.kind = ObjectKind::Table;
        break;
      case 5:
        object.kind = ObjectKind::Query;
        break;
      case 4:
      case 6:
        object.kind = ObjectKind::LinkedTable;
        break;
      default:
        return std::nullopt;
    }
    object.id = integerOf(row, id);
    object.name = textOf(row, name);
    object.flags = static_cast<std::uint32_t>(integerOf(row, flags));
    return object;
  }

  int id, parent, name, type, flags;
};

}  // namespace

ObjectCatalog::ObjectCatalog(Pager& pager) : pager_(pager) {}
ObjectCatalog::~ObjectCatalog() = default;

const Table& ObjectCatalog::objectsTable() {
  if (!objects_) objects_ = std::make_unique<Table>(pager_, u"MSysObjects", kObjectsPage);
  return *objects_;
}

std::optional<ObjectCatalog::Location> ObjectCatalog::locate(std::u16string_view name) {
  const Table& table = objectsTable();
  const ObjectRows rows(table);
  const std::optional<IndexNumber> index = table.indexOn({u"ParentId", u"Name"});
  IndexRange range;
  range.equal = {kTablesContainer, std::u16string(name)};
  std::unique_ptr<Cursor> cursor = index ? table.walk(*index, range) : table.scan();
  while (cursor->next()) {
    std::optional<CatalogObject> object = rows.read(cursor->row());
    if (object && sameName(object->name, name))
      return Location{std::move(*object), std::move(cursor)};
  }
  return std::nullopt;
}

std::optional<CatalogObject> ObjectCatalog::find(std::u16string_view name) {
  std::optional<Location> found = locate(name);
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

std::vector<QueryRow> ObjectCatalog::queryRows(std::int32_t objectId) {
  if (!queries_) queries_ = std::make_unique<Table>(pager_, u"MSysQueries", kQueriesPage);
  const Table& table = *queries_;
  const Columns columns(table);
  const int object = columns[u"ObjectId"];
  const int attribute = columns[u"Attribute"];
  const int order = columns[u"Order"];
  const int name1 = columns[u"Name1"];
  const int name2 = columns[u"Name2"];
  const int expression = columns[u"Expression"];
  const int flag = columns[u"Flag"];
  const std::optional<int> extra = table.columnNamed(u"LvExtra");

  struct Found {
    QueryRow row;
    runtime::Variant order;
  };
  std::vector<Found> found;
  const std::optional<IndexNumber> index = table.indexOn({u"ObjectId", u"Attribute", u"Order"});
  IndexRange range;
  range.equal = {objectId};
  const std::unique_ptr<Cursor> cursor = index ? table.walk(*index, range) : table.scan();
  while (cursor->next()) {
    const Row& row = cursor->row();
    if (row.isNull(object) || integerOf(row, object) != objectId) continue;
    Found next;
    next.row.attribute = static_cast<std::uint8_t>(integerOf(row, attribute));
    next.row.name1 = textOf(row, name1);
    next.row.name2 = textOf(row, name2);
    next.row.expression = textOf(row, expression);
    next.row.flag = integerOf(row, flag);
    if (extra && !row.isNull(*extra)) next.row.extra = integerOf(row, *extra);
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
  const std::optional<Location> found = locate(table.name);
  if (!found || found->object.kind != ObjectKind::Table ||
      found->object.definitionPage() != table.definitionPage)
    return std::nullopt;
  const Row& row = found->at->row();
  const runtime::Variant blob = row.value(Columns(objectsTable())[u"LvProp"]);
  if (blob.isNull()) return std::vector<PropertyBlock>();
  return decodeProperties(pager_.header().version, std::get<runtime::Binary>(blob.get()),
                          objectsTable().source().place(row.id().page));
}

void ObjectCatalog::forget() noexcept {
  objects_.reset();
  queries_.reset();
}

}  // namespace jet
