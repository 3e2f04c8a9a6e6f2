#include "editor/ListEntry.h"
#include "editor/frmMain.h"
#include "platform/runtime/Conversion.h"
#include "productadd/frmAddPlu.h"
#include "shared/mdMain.h"

void frmMain::SplitEntry(std::u16string_view entry) {
  strItemDesc = listentry::descriptionOf(entry);
  intItemId = listentry::idOf(entry);
}

void frmMain::PlaceItem(std::int16_t key) {
  Label3.Caption(runtime::toText(intItemId));
  MyButton1(key).caption(strItemDesc);
  Grid1.TextMatrix(key, 1, runtime::toText(intItemId));
}

void frmMain::List1_DblClick() {
  SplitEntry(List1.Text());
  PlaceItem(CurrentKey);
}

void frmMain::MyButton1_OLEDragDrop(std::int16_t Index, forms::DataObject& Data) {
  if (!Data.GetFormat(forms::kTextFormat)) return;
  SplitEntry(Data.GetData(forms::kTextFormat));
  PlaceItem(Index);
}

// `strAddedDesc` and `strAddedId` are never emptied: closing `frmAddPlu` without adding a product
// places the product added last on this key (contract).
void frmMain::MyButton1_DblClick(std::int16_t Index) {
  CurrentKey = Index;
  forms::DefaultInstance<frmAddPlu>::get()->ShowModal();
  if (mdMain::strAddedDesc.empty()) return;
  strItemDesc = mdMain::strAddedDesc;
  intItemId = runtime::toInteger(mdMain::strAddedId);
  PlaceItem(CurrentKey);
  strItemDesc.clear();
}
