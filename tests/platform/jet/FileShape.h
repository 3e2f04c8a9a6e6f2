#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/RandomUpdates.h"
#include "platform/jet/format/Numbers.h"
#include "platform/jet/format/RowPointer.h"

namespace jettest {

/// The parts of a file that a change may alter: the position of the row, the pages of the table's
/// indexes, the usage maps.
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

/// The shape of the file for the row and the table of the change.
FileShape shapeOf(const std::filesystem::path& file, std::u16string_view password,
                  const Change& change);

/// The differences between two shapes, in words: "moved", "leaf split", "node split at level 2".
std::set<std::string> kindsOf(const FileShape& before, const FileShape& after);

}  // namespace jettest
