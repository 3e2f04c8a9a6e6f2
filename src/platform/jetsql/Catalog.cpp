#include "platform/jetsql/Catalog.h"

#include "platform/jetsql/Error.h"
#include "platform/jetsql/SavedQuery.h"

namespace jetsql {

CatalogEntry Catalog::entry(std::u16string_view name) {
  const auto object = database_.find(name);
  if (!object) throw error::missingObject(name);
  switch (object->kind) {
    case jet::ObjectKind::Table:
      return &database_.table(*object);
    case jet::ObjectKind::LinkedTable:
      throw error::engine(u"The table '" + object->name +
                          u"' is linked from another database, which can't be opened here.");
    case jet::ObjectKind::Query:
      break;
  }
  return CatalogQuery{object->id, queryFromRows(object->name, database_.queryRows(*object))};
}

}  // namespace jetsql
