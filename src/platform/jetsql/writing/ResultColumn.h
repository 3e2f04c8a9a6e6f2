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
  /// The table and the column of it that the values come from unchanged, and the source row that
  /// holds it; without a table the values are calculated, and the column can't be written.
  std::optional<jet::TableIdentity> table = {};
  jet::ColumnIdentity tableColumn = {};
  int sourceRow = 0;
};

}  // namespace jetsql
