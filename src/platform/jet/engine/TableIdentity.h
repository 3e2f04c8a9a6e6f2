#pragma once

#include <string>

#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Numbers.h"

namespace jet {

/// The names of a table, which stay valid when its definition has been dropped.
struct TableIdentity {
  std::u16string name;
  PageNumber definitionPage;  ///< first page of its definition
  bool operator==(const TableIdentity&) const = default;
};

/// The same for a column of a table.
struct ColumnIdentity {
  ColumnNumber number;  ///< stays when other columns are deleted
  std::u16string name;
  ColumnType type = ColumnType::Long;
  bool operator==(const ColumnIdentity&) const = default;
};

}  // namespace jet
