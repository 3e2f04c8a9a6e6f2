#pragma once

#include <cstdint>
#include <vector>

#include "makestore/PageSpace.h"
#include "platform/jet/format/IndexPage.h"

namespace makestore {

/// A finished index: its root and all its pages, in ascending order.
struct IndexTree {
  jet::PageNumber root;
  std::vector<jet::PageNumber> pages;
};

/// Builds an index from its entries, which must be in order: the leaves first, then levels of nodes
/// until a level has one page. `owner` is the table's definition page; for `packed` see Index.
IndexTree buildIndex(PageSpace& space, jet::PageNumber owner,
                     const std::vector<jet::IndexEntry>& entries, bool packed);

}  // namespace makestore
