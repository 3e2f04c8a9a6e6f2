#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/jet/engine/Database.h"
#include "platform/jet/format/Numbers.h"
#include "platform/jet/format/RowPointer.h"

namespace jettest {

/// The parts of a file that a change of a table's row may alter: the position of the row, the pages
/// of the table's indexes, the usage maps.
struct FileShape {
  struct Map {
    bool isReference = false;
    jet::PageNumber firstPage;
    std::size_t length = 0;
    std::ptrdiff_t bitmaps = 0;  ///< bitmap pages of a reference map
  };
  std::optional<jet::RowPointer> body;  ///< of a row that moved: where its pointer leads
  struct Index {
    std::vector<int> levels;         ///< pages of each level, leaves first
    std::vector<jet::Bytes> bounds;  ///< the entries of its nodes
  };
  std::vector<Index> indexes;
  Map freePages;          ///< the global map
  std::vector<Map> maps;  ///< those of the table and of its indexes
};

/// The shape of the file for this table, without the position of a row.
FileShape shapeOf(const jet::Table& table);
/// Where the row's pointer leads; absent for a row in its slot.
std::optional<jet::RowPointer> bodyOf(const jet::Table& table, jet::RowId row);

/// The differences between two shapes, in words: "moved", "leaf split", "node split at level 2".
std::set<std::string> differencesBetween(const FileShape& before, const FileShape& after);

}  // namespace jettest
