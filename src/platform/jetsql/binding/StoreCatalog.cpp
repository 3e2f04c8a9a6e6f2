#include "platform/jetsql/binding/StoreCatalog.h"

#include "platform/jetsql/binding/SavedQuery.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {

CatalogEntry StoreCatalog::entry(std::u16string_view name) {
  const auto object = database_.find(name);
  if (!object) throw error::missingObject(name);
  switch (object->kind) {
    case jet::ObjectKind::Table:
      return &database_.table(*object);
    case jet::ObjectKind::LinkedTable:
      throw error::linkedTable(object->name);
    case jet::ObjectKind::Query:
      break;
  }
  return StoredQuery{object->id, queryFromRows(object->name, database_.queryRows(*object))};
}

}  // namespace jetsql
