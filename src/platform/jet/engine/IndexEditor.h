#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/jet/engine/Constraints.h"
#include "platform/jet/engine/IndexPath.h"
#include "platform/jet/engine/UsageMaps.h"

namespace jet {

/// Changes the entries of one index. New entries are staged in `InsertEntries`, before the row
/// itself changes, removals in `RemoveEntries`, after it: a leaf that gains one entry and loses
/// another is written twice. Where pages of a split depend on each other, each reaches the disk
/// before the next is written.
class IndexEditor {
 public:
  IndexEditor(PageChanges& changes, UsageMaps& maps, const TableSource& source, IndexNumber index)
      : changes_(changes), maps_(maps), source_(source), index_(index) {}

  enum class Insertion {
    AlreadyThere,  ///< left by an interrupted change; counts as inserted
    KnownKey,      ///< another row has the same key
    NewKey,
  };
  Insertion insert(const IndexEntry& entry);

  /// Removes the old entry of a row. Calls `clean` where the entry isn't found, or where an
  /// interrupted change has left entries or links in the index.
  void removeOld(RowId row, const KeyChange& change);
  /// Removes all entries of a row but `kept`, all entries outside the bounds of their page, and the
  /// wrong links between leaves. Reads the entire index.
  void clean(RowId row, const std::optional<Bytes>& kept);

 private:
  IndexPage open(PageNumber number, PageNumber from) {
    return openIndexPage(changes_, source_, number, source_.location(from));
  }
  IndexPath pathTo(ByteView entry);
  PageNumber takePage();
  bool isNewKey(const IndexPath& path, std::size_t at);
  void stage(WriteStep step, PageNumber number, const IndexPage& page);
  void stageAfterRemoval(PageNumber number, Bytes page);

  void splitLeaf(IndexPath& path, std::size_t inserted);
  void insertInParent(IndexPath& path, std::size_t depth, IndexEntry entry);
  void splitNode(IndexPath& path, std::size_t depth);
  void growRoot(PageNumber root, const IndexPage& page, std::size_t inserted);

  void removeAt(IndexPath& path, std::size_t at);
  void tightenBound(IndexPath& path, std::size_t depth, const Bytes& last);
  void unlink(IndexPath& path, std::size_t depth);
  void trimNextTo(const IndexPath::Node& node);

  enum class Link { Previous, Next };
  std::optional<Bytes> relinked(PageNumber number, Link link, PageNumber to, PageNumber of);
  void repairLinkToLeaf(const IndexPath& path, WriteStep step);

  struct TreeLeaf {
    PageNumber number;
    Bytes bound;  ///< its entries are greater; empty for the first
  };
  void collectLeaves(PageNumber number, PageNumber from, const Bytes& bound, int level,
                     std::vector<TreeLeaf>& leaves);

  PageChanges& changes_;
  UsageMaps& maps_;
  const TableSource& source_;
  IndexNumber index_;
  /// True once an entry or a link was found that only an interrupted change leaves. From then on
  /// all pages of a removal are written in strict order, with all the syncs that it takes.
  bool sawLeftovers_ = false;
};

}  // namespace jet
