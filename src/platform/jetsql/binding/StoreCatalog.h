#pragma once

#include <string_view>
#include <variant>

#include "platform/jet/engine/Database.h"
#include "platform/jetsql/syntax/ParsedQuery.h"

namespace jetsql {

/// A saved query, and its identity in the file.
struct StoredQuery {
  jet::ObjectId id;
  ParsedQuery query;
};

/// The object that a name in FROM refers to.
using CatalogEntry = std::variant<const jet::Table*, StoredQuery>;

/// The tables and saved queries of one file, each looked up when a statement names it.
class StoreCatalog {
 public:
  explicit StoreCatalog(jet::Database& database) : database_(database) {}

  /// Raises the engine's error for a name that the file doesn't have, for a linked table, and for a
  /// query that can't be run.
  CatalogEntry entry(std::u16string_view name);

 private:
  jet::Database& database_;
};

}  // namespace jetsql
