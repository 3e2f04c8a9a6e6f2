#include "platform/jet/engine/RowReader.h"

namespace jet {

bool RowReader::find(RowId id) {
  if (id.page != pageNumber_) {
    open_ = findDataPage(source_, id.page);
    pageNumber_ = id.page;
  }
  if (!open_ || !findRow(source_, id, *open_, found_)) return false;
  row_ = Row(source_, id, found_);
  return true;
}

}  // namespace jet
