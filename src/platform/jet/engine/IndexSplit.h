#pragma once

#include "platform/jet/format/Damage.h"
#include "platform/jet/format/IndexPage.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// An index page cut in two: both halves, without links, and the entry for the first in their
/// parent.
struct SplitIndexPage {
  IndexPage first;
  IndexPage second;
  Bytes bound;
};

/// Splits a page that has too many entries. The preferred cut is in the middle, or before the last
/// entry of a leaf whose entries are added in ascending order; the nearest cut to it is taken at
/// which both halves fit. A node's entry at the cut moves to the parent, and its child becomes the
/// first half's tail. Raises where no cut fits.
SplitIndexPage splitIndexPage(const Layout& layout, const IndexPage& page, bool ascending,
                              const Location& location);

}  // namespace jet
