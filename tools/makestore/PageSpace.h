#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace makestore {

/// The pages of the new file, allocated one after the other, and the usage maps that record which
/// table or index they belong to.
class PageSpace {
 public:
  /// Allocates page 0 and the page of the global maps. With `referenceMaps` every usage map is a
  /// list of bitmap pages, as in large files.
  PageSpace(jet::Version version, bool referenceMaps);

  jet::Version version() const { return layout_.version; }
  const jet::Layout& layout() const { return layout_; }

  /// Adds a page of zeros at the end of the file and returns its number.
  jet::PageNumber allocate();
  /// Adds a page at the end that belongs to nothing and is marked free.
  void addFreePage();
  /// The page's bytes; valid until the next allocation.
  jet::Bytes& page(jet::PageNumber number) { return pages_[number.value()]; }
  void put(jet::PageNumber number, jet::Bytes bytes) { page(number) = std::move(bytes); }

  /// Those of these data pages that have room for another row.
  std::vector<jet::PageNumber> withRoom(const std::vector<jet::PageNumber>& dataPages);

  /// Adds a usage map without pages and returns its row.
  jet::RowPointer newMap();
  /// Sets the pages of a map, which must be in ascending order. Allocates bitmap pages where the
  /// map needs them.
  void writeMap(jet::RowPointer map, const std::vector<jet::PageNumber>& pages);
  /// Writes the global map: all allocated pages are in use. To be called after the last allocation.
  void writeGlobalMap();

  /// All pages, in their order.
  std::vector<jet::Bytes>& pages() { return pages_; }

 private:
  jet::UsageMap emptyReferenceMap() const;
  bool fitsWindow(const std::vector<jet::PageNumber>& pages) const;
  void writeReferenceMap(jet::RowPointer map, const std::vector<jet::PageNumber>& pages);
  void writeGlobalReferenceMap();
  void putMapRow(jet::RowPointer map, jet::ByteView row);

  const jet::Layout& layout_;
  bool referenceMaps_;
  std::vector<jet::Bytes> pages_;
  std::vector<jet::PageNumber> freePages_;
  jet::PageNumber mapPage_;
};

}  // namespace makestore
