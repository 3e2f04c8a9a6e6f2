#include "editor/frmMain.h"
#include "layoutdata/Settings.h"
#include "layoutdata/Statements.h"
#include "platform/profile/Settings.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "productadd/frmAddPlu.h"
#include "shared/mdMain.h"
#include "shared/mdOpenDatabase.h"

namespace settings = layoutdata::settings;
namespace statements = layoutdata::statements;

using mdOpenDatabase::StoreConnection;
using mdOpenDatabase::StoreRecordset;

namespace {

// A list entry: the description cut or filled to 30 characters, 100 blanks that push the id out of
// sight, the id in decimal.
constexpr std::ptrdiff_t kDescriptionLength = 30;
constexpr std::size_t kDescriptionFill = 40;
constexpr std::size_t kGapLength = 100;
constexpr std::ptrdiff_t kIdStart = 130;

}  // namespace

void frmMain::LoadCombo() {
  mdOpenDatabase::OpenDatabase(statements::kMaster);
  StoreRecordset.setNew();
  StoreRecordset->Open(statements::kDepartments, *StoreConnection, mdOpenDatabase::kKeyset,
                       mdOpenDatabase::kPessimistic, mdOpenDatabase::kUnspecified);
  if (StoreRecordset->RecordCount() > 0) {
    while (!StoreRecordset->Eof()) {
      cbDept.AddItem(StoreRecordset->Fields(u"Description").value() & u"");
      StoreRecordset->MoveNext();
    }
  }
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
}

void frmMain::LoadList(const std::u16string& strDesc) {
  List1.Clear();
  mdOpenDatabase::OpenDatabase(statements::kMasterMixedCase);
  const std::u16string source = strDesc.empty() ? std::u16string(statements::kItems)
                                                : std::u16string(statements::kItemsOfDepartmentHead)
                                                      .append(strDesc)
                                                      .append(statements::kItemsOfDepartmentTail);
  StoreRecordset.setNew();
  StoreRecordset->Open(source, *StoreConnection, mdOpenDatabase::kForwardOnly,
                       mdOpenDatabase::kPessimistic, mdOpenDatabase::kUnspecified);
  while (!StoreRecordset->Eof()) {
    const bool skipped =
        chkBarcode.Value() == 1 && !(StoreRecordset->Fields(u"barcode").value() & u"").empty();
    if (!skipped) {
      const std::u16string description = (StoreRecordset->Fields(u"Description").value() & u"") +
                                         runtime::spaces(kDescriptionFill);
      List1.AddItem(runtime::left(description, kDescriptionLength) + runtime::spaces(kGapLength) +
                    (StoreRecordset->Fields(u"id").value() & u""));
    }
    StoreRecordset->MoveNext();
  }
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
}

void frmMain::cbDept_Click() {
  if (LoadGuard == kTrue) return;
  LoadList(cbDept.Text());
}

void frmMain::chkBarcode_Click() {
  if (LoadGuard == kTrue) return;
  profile::SaveSetting(settings::kHideBarcode.application, settings::kHideBarcode.section,
                       settings::kHideBarcode.key, runtime::toText(chkBarcode.Value()));
  LoadList(cbDept.Text());
}

void frmMain::cmdSelCol_Click() {
  SelectButCol();
}

// Nobody asks how the dialog was closed: Cancel goes on with the colour that the dialog holds.
void frmMain::SelectButCol() {
  CommonDialog1.ShowColor();
  SetButtonColour(runtime::toText(CommonDialog1.Color()), CurrentKey);
  txtColour.Text(runtime::toText(CommonDialog1.Color()));
}

void frmMain::SplitEntry(std::u16string_view entry) {
  strItemDesc = runtime::trim(runtime::left(entry, kDescriptionLength));
  const auto idLength = static_cast<std::ptrdiff_t>(entry.size()) - kIdStart;
  intItemId = runtime::toInteger(runtime::trim(runtime::right(entry, idLength)));
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

// The two strings are never emptied: closing the sheet without adding places the last added product
// again.
void frmMain::MyButton1_DblClick(std::int16_t Index) {
  CurrentKey = Index;
  forms::DefaultInstance<frmAddPlu>::get()->ShowModal();
  if (mdMain::strAddedDesc.empty()) return;
  strItemDesc = mdMain::strAddedDesc;
  intItemId = runtime::toInteger(mdMain::strAddedId);
  PlaceItem(CurrentKey);
  strItemDesc.clear();
}
