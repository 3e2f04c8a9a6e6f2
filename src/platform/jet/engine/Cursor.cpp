#include "platform/jet/engine/Cursor.h"

#include "platform/jet/engine/TableSource.h"

namespace jet {

bool RowReader::find(RowId id) {
  FoundRow found;
  if (!findRow(source_, id, found)) return false;
  row_ = Row(source_, id, found);
  return true;
}

}  // namespace jet
