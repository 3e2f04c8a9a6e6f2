#include "platform/jet/engine/RowReader.h"

#include <utility>

#include "platform/jet/engine/TableSource.h"

namespace jet {

bool RowReader::find(RowId id) {
  if (id.page != pageNumber_) {
    page_ = findDataPage(source_, id.page);
    pageNumber_ = id.page;
  }
  FoundRow found;
  if (!page_ || !findRow(source_, id, page_, found)) return false;
  row_ = Row(source_, id, std::move(found));
  return true;
}

}  // namespace jet
