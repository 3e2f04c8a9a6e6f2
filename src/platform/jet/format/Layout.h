#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/jet/format/Numbers.h"

namespace jet {

/// The two generations of the file format.
enum class Version : std::uint8_t { Jet3, Jet4 };

/// Kind of a page: its first byte.
enum class PageType : std::uint8_t {
  Header = 0,
  Data = 1,
  TableDefinition = 2,
  IndexNode = 3,
  IndexLeaf = 4,
  Bitmap = 5,
};

/// Fields that pages have in common: offsets in the page.
struct PageHead {
  static constexpr std::size_t kType = 0;       ///< u8, a PageType
  static constexpr std::size_t kMark = 1;       ///< u8, always kLive
  static constexpr std::size_t kFreeBytes = 2;  ///< u16: data, index and Jet 4 definition pages
  static constexpr std::size_t kOwner = 4;      ///< u32: data and index pages
  static constexpr std::uint8_t kLive = 1;
};

/// Pages at fixed numbers.
inline constexpr PageNumber kHeaderPage{0};
inline constexpr PageNumber kGlobalMapPage{1};
inline constexpr PageNumber kObjectsPage{2};  ///< definition of MSysObjects
inline constexpr PageNumber kAcesPage{3};
inline constexpr PageNumber kQueriesPage{4};
inline constexpr PageNumber kRelationshipsPage{5};

/// Offsets and sizes that differ between the generations. Offsets count from the start of the page;
/// sizes are in bytes.
struct Layout {
  Version version;
  std::size_t pageSize;
  std::uint64_t largestFile;
  std::size_t longestRow;
  std::size_t longestPiece;   ///< of a long value on a page of its own
  std::size_t longestInline;  ///< long value that is kept in the row
  std::size_t characterSize;  ///< of text that isn't compressed
  std::size_t rowUnit;        ///< row: size of each count and offset in it
  std::size_t dataSlotCount;  ///< data page: u16
  std::size_t dataSlots;      ///< data page: u16 each
  std::size_t indexPrevious;  ///< index page: u32, page before on the same level
  std::size_t indexNext;      ///< index page: u32, page after
  std::size_t indexTail;      ///< index page: u32, last child of a node
  std::size_t indexPrefix;    ///< index page: u8 / u16, length of the common prefix
  std::size_t indexLevel;     ///< index page: u8, 0 for leaves
  std::size_t indexMask;      ///< index page: bit n set where an entry ends at byte n of the data
  std::size_t indexData;      ///< index page: the entries
  std::size_t defaultMapRow;  ///< length of a new usage map's row

  std::size_t indexCapacity() const { return pageSize - indexData; }
};

inline constexpr Layout kJet3Layout{.version = Version::Jet3,
                                    .pageSize = 2048,
                                    .largestFile = 1ULL << 30,
                                    .longestRow = 2012,
                                    .longestPiece = 2032,
                                    .longestInline = 32,
                                    .characterSize = 1,
                                    .rowUnit = 1,
                                    .dataSlotCount = 8,
                                    .dataSlots = 10,
                                    .indexPrevious = 8,
                                    .indexNext = 12,
                                    .indexTail = 16,
                                    .indexPrefix = 20,
                                    .indexLevel = 21,
                                    .indexMask = 22,
                                    .indexData = 248,
                                    .defaultMapRow = 133};

inline constexpr Layout kJet4Layout{.version = Version::Jet4,
                                    .pageSize = 4096,
                                    .largestFile = 1ULL << 31,
                                    .longestRow = 4060,
                                    .longestPiece = 4076,
                                    .longestInline = 64,
                                    .characterSize = 2,
                                    .rowUnit = 2,
                                    .dataSlotCount = 12,
                                    .dataSlots = 14,
                                    .indexPrevious = 12,
                                    .indexNext = 16,
                                    .indexTail = 20,
                                    .indexPrefix = 24,
                                    .indexLevel = 26,
                                    .indexMask = 27,
                                    .indexData = 480,
                                    .defaultMapRow = 69};

inline constexpr const Layout& layoutOf(Version version) {
  return version == Version::Jet3 ? kJet3Layout : kJet4Layout;
}

}  // namespace jet
