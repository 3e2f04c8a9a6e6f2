#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace makestore {

/// The pages of the file that grows: handed out one after the other, together with the usage maps
/// that say what they belong to.
class PageSpace {
 public:
  /// Page 0 and the page of the global maps are there from the start. `referenceMaps` keeps every
  /// usage map as page numbers of bitmap pages, as large files have them.
  PageSpace(jet::Version version, bool referenceMaps);

  jet::Version version() const { return layout_.version; }
  const jet::Layout& layout() const { return layout_; }

  /// Takes a new page of zeros at the end of the file.
  std::uint32_t allocate();
  /// Adds a page at the end that belongs to nothing and is marked free.
  void addFreePage();
  /// The page's bytes; good until a page is taken.
  jet::Bytes& page(std::uint32_t number) { return pages_[number]; }
  void put(std::uint32_t number, jet::Bytes bytes) { pages_[number] = std::move(bytes); }

  /// Those of these data pages that have room worth a try for another row.
  std::vector<std::uint32_t> roomy(const std::vector<std::uint32_t>& dataPages);

  /// Takes room for a usage map, at first without pages.
  jet::RowPointer newMap();
  /// Makes the map hold these pages, which rise. Bitmap pages are taken where the map needs them.
  void writeMap(jet::RowPointer map, const std::vector<std::uint32_t>& pages);
  /// Writes the global map: all that was taken is in use. Nothing may be taken after it.
  void writeGlobalMap();

  /// All pages, in their order.
  std::vector<jet::Bytes>& pages() { return pages_; }

 private:
  jet::UsageMap emptyReferenceMap() const;
  bool fitsWindow(const std::vector<std::uint32_t>& pages) const;
  void writeReferenceMap(jet::RowPointer map, const std::vector<std::uint32_t>& pages);
  void writeGlobalReferenceMap();
  void putMapRow(jet::RowPointer map, jet::ByteView row);

  const jet::Layout& layout_;
  bool referenceMaps_;
  std::vector<jet::Bytes> pages_;
  std::vector<std::uint32_t> freePages_;
  std::uint32_t mapPage_ = 0;
};

}  // namespace makestore
