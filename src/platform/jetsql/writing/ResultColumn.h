#pragma once

#include <optional>
#include <string>

#include "platform/jet/engine/TableIdentity.h"
#include "platform/jetsql/functions/Type.h"

namespace jetsql {

/// A column of a result.
struct ResultColumn {
  std::u16string name = {};  ///< as the statement or the file spells it
  Type type = Type::Null;
  /// The table, its column and the source row that the values are read from. Without a table the
  /// values are calculated, and the column can't be updated.
  std::optional<jet::TableIdentity> table = {};
  jet::ColumnIdentity tableColumn = {};
  int sourceRow = 0;
};

}  // namespace jetsql
