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

/// What a change may do to a file: where the row lies, the pages of the table's indexes, the usage
/// maps.
struct FileShape {
  struct Map {
    bool inReferences = false;
    jet::PageNumber firstPage;
    std::size_t length = 0;
    std::ptrdiff_t bitmaps = 0;  ///< bitmap pages of a map in references
  };
  std::optional<jet::RowPointer> body;  ///< where the row's slot points
  struct Index {
    std::vector<int> levels;         ///< pages of each level, leaves first
    std::vector<jet::Bytes> bounds;  ///< the entries of its nodes
  };
  std::vector<Index> indexes;
  Map freePages;          ///< the global map
  std::vector<Map> maps;  ///< those of the table and of its indexes
};

/// The shape of the file as far as it concerns the change's row and table.
FileShape shapeOf(const std::filesystem::path& file, std::u16string_view password,
                  const Change& change);

/// What happened between two shapes, in words: "moved", "leaf split", "node split at level 2".
std::set<std::string> kindsOf(const FileShape& before, const FileShape& after);

}  // namespace jettest
