#include "editor/ListEntry.h"
#include "editor/frmMain.h"
#include "layoutdata/Settings.h"
#include "layoutdata/Statements.h"
#include "platform/adodb/Recordset.h"
#include "platform/profile/SettingsStore.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdOpenDatabase.h"

namespace settings = layoutdata::settings;
namespace statements = layoutdata::statements;

using mdOpenDatabase::StoreConnection;
using mdOpenDatabase::StoreRecordset;

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
    if (!skipped)
      List1.AddItem(listentry::make(StoreRecordset->Fields(u"Description").value() & u"",
                                    StoreRecordset->Fields(u"id").value() & u""));
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
