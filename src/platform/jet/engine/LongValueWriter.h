#pragma once

#include <cstdint>
#include <map>

#include "platform/jet/engine/FreeSpace.h"

namespace jet {

/// Stages what a change does to the memo and OLE values of a row.
class LongValueWriter {
 public:
  LongValueWriter(PageChanges& changes, UsageMaps& maps, const TableSource& source)
      : changes_(changes), maps_(maps), source_(source) {}

  /// Stages a value and returns what its row holds of it: all of a short one, the head of a longer
  /// one, whose pieces go to pages of the column's own.
  Bytes store(const ColumnDefinition& column, ByteView value);
  /// Stages the deletion of a value's pieces; `stored` is what the row held of it.
  void drop(const ColumnDefinition& column, ByteView stored);
  /// Stages what the maps say of the pages that were changed. The last thing to do.
  void noteFreeSpace();

 private:
  FreeSpace& spaceOf(const ColumnDefinition& column);

  PageChanges& changes_;
  UsageMaps& maps_;
  const TableSource& source_;
  std::map<ColumnNumber, FreeSpace> spaces_;
};

}  // namespace jet
