#pragma once

#include <cstdint>
#include <map>

#include "platform/jet/engine/FreeSpace.h"

namespace jet {

/// Stages the changes to the memo and OLE values of a row.
class LongValueWriter {
 public:
  LongValueWriter(PageChanges& changes, UsageMaps& maps, const TableSource& source)
      : changes_(changes), maps_(maps), source_(source) {}

  /// Stages a value and returns the bytes that its row holds: all of a short value, the head of a
  /// longer one, whose pieces are stored on pages of the column.
  Bytes store(const ColumnDefinition& column, ByteView value);
  /// Stages the deletion of a value's pieces; `stored` are the bytes that the row held.
  void drop(const ColumnDefinition& column, ByteView stored);
  /// Stages the new state of the changed pages in the maps. Call it last.
  void noteFreeSpace();

 private:
  FreeSpace& spaceOf(const ColumnDefinition& column);

  PageChanges& changes_;
  UsageMaps& maps_;
  const TableSource& source_;
  std::map<ColumnNumber, FreeSpace> spaces_;
};

}  // namespace jet
