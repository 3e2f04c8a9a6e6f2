#pragma once

#include <string>

#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Numbers.h"

namespace jet {

/// A table, by what still names it when its definition has been forgotten.
struct TableIdentity {
  std::u16string name;
  PageNumber definitionPage;  ///< first page of its definition
  bool operator==(const TableIdentity&) const = default;
};

/// A column of a table likewise.
struct ColumnIdentity {
  ColumnNumber number;  ///< stays when other columns are deleted
  std::u16string name;
  ColumnType type = ColumnType::Long;
  bool operator==(const ColumnIdentity&) const = default;
};

}  // namespace jet
