#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "makestore/StoreTable.h"
#include "makestore/StoredQuery.h"
#include "platform/jet/format/ObjectRow.h"

namespace makestore {

/// One of the store's own tables or queries, for the object list.
struct ListedObject {
  jet::ObjectId id;
  jet::ObjectType type = jet::ObjectType::Table;
  std::u16string name;
  std::int32_t flags = 0;
  jet::Bytes properties;
};

// The engine's own tables with their rows.

/// MSysObjects; `date` is the creation date of all objects.
StoreTable objectList(jet::Version version, const std::vector<ListedObject>& objects, double date);
/// MSysACEs, with the permissions of the engine's own objects and of `objects`.
StoreTable permissions(jet::Version version, const std::vector<ListedObject>& objects);
/// MSysQueries; `ids` are the queries' object ids.
StoreTable savedQueries(jet::Version version, const std::vector<StoredQuery>& queries,
                        const std::vector<jet::ObjectId>& ids);
/// MSysRelationships, without rows.
StoreTable relationships();

}  // namespace makestore
