#pragma once

#include <string>

#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Numbers.h"

namespace jet {

/// Identifies a table. Stays valid when the definition that was read has been dropped.
struct TableIdentity {
  std::u16string name;
  PageNumber definitionPage;  ///< first page of its definition
  bool operator==(const TableIdentity&) const = default;
};

/// Identifies a column of a table, likewise.
struct ColumnIdentity {
  ColumnNumber number;  ///< doesn't change when other columns are deleted
  std::u16string name;
  ColumnType type = ColumnType::Long;
  bool operator==(const ColumnIdentity&) const = default;
};

}  // namespace jet
