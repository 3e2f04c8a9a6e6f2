#include "productadd/frmAddPlu.h"

#include <array>
#include <string>

#include "layoutdata/Statements.h"
#include "platform/adodb/Recordset.h"
#include "platform/process/Process.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "productadd/frmAddPlu_design.h"
#include "shared/mdMain.h"
#include "shared/mdOpenDatabase.h"

namespace design = frmAddPlu_design;
namespace statements = layoutdata::statements;

using mdOpenDatabase::StoreConnection;
using mdOpenDatabase::StoreRecordset;

namespace {

// Columns and rows of the grid, whose row 0 is collapsed.
constexpr int kLabels = 1;
constexpr int kValues = 2;
constexpr int kName = 1;
constexpr int kPrice = 2;
constexpr int kDepartment = 3;
constexpr int kFirstFlag = 4;
constexpr int kLastRow = 8;

constexpr std::array<std::u16string_view, kLastRow> kCaptions{
    u"Product Name",       u"Selling Price",     u"Department Link",    u"Print on Printer 1",
    u"Print on Printer 2", u"Set as Open Price", u"Set as Instruction", u"Set as Negative Price"};

constexpr int kAlignment = 6;     // left, centred vertically
constexpr int kLabelWidth = 200;  // pixels of 15 twips
constexpr int kMaxLength = 50;
constexpr std::size_t kDepartmentGap = 1000;  // pushes the id out of sight; no code reads the id

constexpr std::u16string_view kNoFreeRow =
    u"There are no records where the data can be saved. In the POS, you will need to open the "
    u"Product Programming form under Management functions and setup the item first.";

void OpenStatement(std::u16string_view source) {
  StoreRecordset->Open(source, *StoreConnection, mdOpenDatabase::kKeyset,
                       mdOpenDatabase::kPessimistic, mdOpenDatabase::kUnspecified);
}

}  // namespace

frmAddPlu::frmAddPlu()
    : Form(design::kForm),
      Picture1(*this, design::kPicture1),
      cmdSave(Picture1, design::kCmdSave),
      cmdClose(Picture1, design::kCmdClose),
      lblDeptId(Picture1, design::kLblDeptId),
      Grid1(*this, design::kGrid1) {
  cmdSave.Click = [this] { cmdSave_Click(); };
  cmdClose.Click = [this] { cmdClose_Click(); };
  Grid1.Click = [this] { Grid1_Click(); };
  Grid1.ComboClick = [this](std::int16_t index) { Grid1_ComboClick(index); };
}

void frmAddPlu::Form_Load() {
  SetupAddGrid();
}

void frmAddPlu::SetupAddGrid() {
  Grid1.DisplayFocusRect(false);
  for (int row = kName; row <= kLastRow; ++row) Grid1.Cell(row, kLabels).Text(kCaptions[row - 1]);
  Grid1.Column(kLabels).Locked(true);
  Grid1.Column(kValues).Locked(false);
  for (int row = kName; row <= kLastRow; ++row) Grid1.Cell(row, kLabels).Alignment(kAlignment);
  for (int row = kName; row <= kLastRow; ++row) Grid1.Cell(row, kValues).Alignment(kAlignment);
  Grid1.Column(kLabels).Width(kLabelWidth);
  Grid1.Column(kValues).Kind(FlexCell::CellType::ComboBox);
  Grid1.Column(kValues).MaxLength(kMaxLength);
  // Only the department's cell keeps the kind of its column.
  Grid1.Cell(kName, kValues).Kind(FlexCell::CellType::Text);
  Grid1.Cell(kPrice, kValues).Kind(FlexCell::CellType::Text);
  for (int row = kFirstFlag; row <= kLastRow; ++row)
    Grid1.Cell(row, kValues).Kind(FlexCell::CellType::CheckBox);
  for (int row = kFirstFlag; row <= kLastRow; ++row)
    Grid1.Cell(row, kValues).Text(runtime::toText(0));
  Grid1.DisplayRowIndex(2);
  Grid1.RowHeight(0, 0);
  Grid1.Cell(kName, kValues).SetFocus();
  LoadCombo();
}

void frmAddPlu::LoadCombo() {
  mdOpenDatabase::OpenDatabase(statements::kMaster);
  StoreRecordset.setNew();
  OpenStatement(statements::kDepartments);
  if (StoreRecordset->RecordCount() > 0) {
    while (!StoreRecordset->Eof()) {
      Grid1.ComboBox(kValues).AddItem((StoreRecordset->Fields(u"Description").value() & u"") +
                                      runtime::spaces(kDepartmentGap) + u"," +
                                      (StoreRecordset->Fields(u"id").value() & u""));
      StoreRecordset->MoveNext();
    }
  }
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
}

// A click on a label activates the value beside it. In the department row the same call is made
// again, without effect.
void frmAddPlu::Grid1_Click() {
  if (Grid1.ActiveCell().Col == kLabels) Grid1.Cell(Grid1.ActiveCell().Row, kValues).SetFocus();
  if (Grid1.ActiveCell().Row == kDepartment) Grid1.Cell(Grid1.ActiveCell().Row, kValues).SetFocus();
}

// The department is looked up by name, although the selected item contains its id (contract).
void frmAddPlu::Grid1_ComboClick(std::int16_t) {
  const std::u16string department = runtime::trim(Grid1.Cell(kDepartment, kValues).Text());
  if (department.empty()) return;
  mdOpenDatabase::OpenDatabase(statements::kMaster);
  StoreRecordset.setNew();
  OpenStatement(std::u16string(statements::kDepartmentByNameHead)
                    .append(department)
                    .append(statements::kDepartmentByNameTail));
  lblDeptId.Caption(StoreRecordset->Fields(u"id").value().toText());
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
}

// The sheet closes in every case, also when there was no free row.
void frmAddPlu::cmdSave_Click() {
  AddProduct();
  Unload();
  forms::DefaultInstance<frmAddPlu>::drop();
}

void frmAddPlu::cmdClose_Click() {
  Unload();
  forms::DefaultInstance<frmAddPlu>::drop();
}

void frmAddPlu::AddProduct() {
  mdOpenDatabase::OpenDatabase(statements::kMaster);
  StoreRecordset.setNew();
  OpenStatement(statements::kFreeSlots);
  if (StoreRecordset->RecordCount() == 0) {
    process::MsgBox(std::u16string(kNoFreeRow));
    StoreRecordset->Close();
    StoreRecordset.setAbsent();
    mdOpenDatabase::CloseDatabase();
    return;
  }
  StoreRecordset->Fields(u"description").value(runtime::trim(Grid1.Cell(kName, kValues).Text()));
  StoreRecordset->Fields(u"price").value(
      runtime::leadingNumber(Grid1.Cell(kPrice, kValues).Text()));
  StoreRecordset->Fields(u"deptid").value(lblDeptId.Caption());
  StoreRecordset->Update();
  const std::int32_t id = StoreRecordset->Fields(u"id").value().toLong();
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  StoreRecordset.setNew();
  OpenStatement(std::u16string(statements::kFlags).append(runtime::toText(id)));

  // The flags are read from the grid after the second recordset has been opened, not before: the
  // order of the steps decides what remains after a failure.
  std::array<std::int16_t, kLastRow - kFirstFlag + 1> flags{};
  for (int row = kFirstFlag; row <= kLastRow; ++row)
    flags[row - kFirstFlag] =
        runtime::toInteger(runtime::leadingNumber(Grid1.Cell(row, kValues).Text()));
  StoreRecordset->Fields(u"PRINTER1").value(flags[0]);
  StoreRecordset->Fields(u"PRINTER2").value(flags[1]);
  StoreRecordset->Fields(u"OPEN_PLU").value(flags[2]);
  StoreRecordset->Fields(u"ITEM_TYPE").value(flags[3]);
  StoreRecordset->Fields(u"NEG_PRICE").value(flags[4]);
  StoreRecordset->Update();
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
  mdMain::strAddedDesc = runtime::trim(Grid1.Cell(kName, kValues).Text());
  mdMain::strAddedId = runtime::toText(id);
}
