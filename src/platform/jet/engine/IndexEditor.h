#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/jet/engine/IndexPath.h"
#include "platform/jet/engine/UsageMaps.h"

namespace jet {

/// Changes the entries of one index. New entries go into the step before the row itself changes,
/// removals into the one behind it: a leaf that gains one entry and loses another is written twice.
class IndexEditor {
 public:
  IndexEditor(PageChanges& changes, UsageMaps& maps, const TableSource& source, std::size_t index)
      : changes_(changes), maps_(maps), source_(source), index_(index) {}

  enum class Insertion {
    AlreadyThere,  ///< left by an interrupted change; counts as inserted
    KnownKey,      ///< another row has the same key
    NewKey,
  };
  Insertion insert(const IndexEntry& entry);

  /// Removes an entry by its bytes; false where it isn't there.
  bool remove(ByteView entry);
  /// True when an entry or a link was met that only an interrupted change leaves.
  bool sawLeftovers() const { return sawLeftovers_; }
  /// Removes all entries of a row but the one to keep, and brings all pages into the bounds and the
  /// leaves into the order that the tree says. Reads the whole index.
  void clean(RowPointer row, const std::optional<Bytes>& kept);

 private:
  IndexPage open(std::uint32_t number, std::uint32_t from) {
    return openIndexPage(changes_, source_, number, source_.place(from));
  }
  IndexPath pathTo(ByteView entry);
  std::uint32_t takePage();
  bool isNewKey(const IndexPath& path, std::size_t at);
  void stage(WriteStep step, std::uint32_t number, const IndexPage& page);

  void splitLeaf(IndexPath& path, std::size_t inserted);
  void insertInParent(IndexPath& path, std::size_t depth, IndexEntry entry);
  void splitNode(IndexPath& path, std::size_t depth);
  void growRoot(std::uint32_t root, const IndexPage& page, std::size_t inserted);

  void removeAt(IndexPath& path, std::size_t at);
  void lowerBound(IndexPath& path, std::size_t depth, const Bytes& last);
  void unlink(IndexPath& path, std::size_t depth);
  /// Takes out of the pages behind a place what an interrupted split left in them below the bound
  /// there, before that bound sinks or goes and makes it part of the tree again.
  void shortenBehind(const IndexPath::Node& node, ByteView bound);

  /// Links of the page `of`, on both sides of the place in the chain that it has, gains or leaves.
  /// Those of nodes are only kept where somebody has linked them.
  void setNext(std::uint32_t number, std::uint32_t next, std::uint32_t of, WriteStep step);
  void setPrevious(std::uint32_t number, std::uint32_t previous, std::uint32_t of, WriteStep step);
  void setLink(std::uint32_t number, std::size_t field, std::uint32_t value, std::uint32_t of,
               WriteStep step);

  struct TreeLeaf {
    std::uint32_t number = 0;
    Bytes bound;  ///< its entries are greater; empty for the first
  };
  void collectLeaves(std::uint32_t number, std::uint32_t from, const Bytes& bound, int level,
                     std::vector<TreeLeaf>& leaves);

  PageChanges& changes_;
  UsageMaps& maps_;
  const TableSource& source_;
  std::size_t index_;
  bool sawLeftovers_ = false;
};

}  // namespace jet
