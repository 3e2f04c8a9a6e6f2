#include "support/ProductSheet.h"

#include <Qt>

#include "platform/process/Process.h"
#include "platform/process/seam/ProcessEnd.h"
#include "platform/runtime/Conversion.h"
#include "productadd/frmAddPlu.h"
#include "shared/mdMain.h"
#include "support/Shop.h"

namespace support {

void typeProduct(WindowDriver& sheet, std::u16string_view name, std::u16string_view price) {
  sheet.type(name);
  sheet.key(Qt::Key_Return);
  sheet.type(price);
  sheet.key(Qt::Key_Return);
}

Added addProduct(TestHost& host, std::u16string_view name) {
  constexpr int kFlags = 5;
  soon([name] {
    WindowDriver sheet("frmAddPlu");
    typeProduct(sheet, name, u"1.25");
    for (int flag = 0; flag < kFlags; ++flag) {
      sheet.key(Qt::Key_Return);
      sheet.key(Qt::Key_Space);
    }
    sheet.click("cmdSave");
  });
  process::dispatch([] { forms::DefaultInstance<frmAddPlu>::get()->ShowModal(); });
  Added added;
  if (!host.failures.empty()) added.error = host.failures.front().number();
  if (!mdMain::strAddedId.empty()) added.id = runtime::toLong(mdMain::strAddedId);
  resetModules();
  process::resetEnded();
  host.failures.clear();
  return added;
}

}  // namespace support
