#include "largeeditor/frmMainBig.h"

#include "largeeditor/frmMainBig_design.h"
#include "layoutdata/LayoutFile.h"
#include "layoutdata/Statements.h"
#include "platform/adodb/Recordset.h"
#include "platform/files/ProgramFolder.h"
#include "platform/forms/Form.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "shared/mdOpenDatabase.h"
#include "shared/notice/frmSaved.h"

namespace statements = layoutdata::statements;

using mdOpenDatabase::StoreConnection;
using mdOpenDatabase::StoreRecordset;

namespace {

// A list entry: the id in decimal, cut or filled to 10 characters, then the full description.
constexpr std::ptrdiff_t kIdLength = 10;

// The text after the id. An entry shorter than the id makes the length negative, which raises
// InvalidProcedureCall.
std::u16string AfterId(std::u16string_view entry) {
  return runtime::right(entry, static_cast<std::ptrdiff_t>(entry.size()) - kIdLength);
}

}  // namespace

frmMainBig::frmMainBig() : KeyEditor(frmMainBig_design::kCommon) {}

void frmMainBig::Form_Load() {
  LoadGrid();
  LoadList();
  LoadButtons();
  List1.OLEDropMode(forms::kDropManual);
  MakeKeysDropTargets();
}

void frmMainBig::LoadList() {
  mdOpenDatabase::OpenDatabase(statements::kMasterMixedCase);
  StoreRecordset.setNew();
  StoreRecordset->Open(statements::kItemsLarge, *StoreConnection, mdOpenDatabase::kForwardOnly,
                       mdOpenDatabase::kPessimistic, mdOpenDatabase::kUnspecified);
  while (!StoreRecordset->Eof()) {
    const std::u16string id =
        (StoreRecordset->Fields(u"id").value() & u"") + runtime::spaces(kIdLength);
    List1.AddItem(runtime::left(id, kIdLength) +
                  (StoreRecordset->Fields(u"Description").value() & u""));
    StoreRecordset->MoveNext();
  }
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
}

void frmMainBig::LoadButtons() {
  const std::u16string path = files::programFolder().append(layoutdata::large::kRead);
  if (!FileSystem->FileExists(path)) return;
  layoutdata::LayoutReader file(path);
  for (std::int16_t key = 0; key < MyButton1.count(); ++key) {
    const layoutdata::KeyLine line = file.next();
    LoadKey(key, line);
    Grid1.TextMatrix(key, 1, line.ProductId());  // untrimmed: contract
  }
}

void frmMainBig::SaveButtons() {
  WriteLayoutFile(files::programFolder().append(layoutdata::large::kWrite));
  forms::DefaultInstance<frmSaved>::get()->ShowModal();
}

void frmMainBig::cmdSave_Click() {
  SaveButtons();
}

void frmMainBig::List1_DblClick() {
  strItemDesc = AfterId(List1.Text());
  intItemId = runtime::toInteger(runtime::left(List1.Text(), kIdLength));
  MyButton1(CurrentKey).caption(strItemDesc);
  Grid1.TextMatrix(CurrentKey, 1, runtime::toText(intItemId));
}

// The id is read before the description, in the reverse order of a double click (contract).
// `strItemDesc` doesn't change.
void frmMainBig::MyButton1_OLEDragDrop(std::int16_t Index, forms::DataObject& Data) {
  if (!Data.GetFormat(forms::kTextFormat)) return;
  std::u16string text = Data.GetData(forms::kTextFormat);
  intItemId = runtime::toInteger(runtime::left(text, kIdLength));
  text = AfterId(text);
  MyButton1(Index).caption(text);
  Grid1.TextMatrix(Index, 1, runtime::toText(intItemId));
}
