#include "editor/frmMain.h"
#include "editor/keygeometry.h"
#include "layoutdata/Settings.h"
#include "layoutdata/Statements.h"
#include "platform/adodb/Recordset.h"
#include "platform/process/Process.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdOpenDatabase.h"
#include "shared/mdWriteINI.h"

namespace settings = layoutdata::settings;
namespace statements = layoutdata::statements;

using mdOpenDatabase::StoreConnection;
using mdOpenDatabase::StoreRecordset;

// Unchecking `Check1` doesn't restore the free layout view; only a restart does (contract).
void frmMain::Check1_Click() {
  if (LoadGuard == kTrue) return;
  if (Check1.Value() == 1) {
    Setlabels(false);
    ArrangeButtons();
  } else {
    process::MsgBox(u"Close the app and restart it.", process::kInformation);
  }
  mdWriteINI::WriteINI(settings::touchFile(), settings::kSettings, settings::kAutofill,
                       runtime::toText(Check1.Value()));
  if (Check1.Value() == 1) {
    mdWriteINI::WriteINI(settings::touchFile(), settings::kSettings, settings::kItemOne,
                         settings::kItemOneBottomLeft);
    lblLevel.Visible(true);
    cbLevel.Visible(true);
    cbLevel.ListIndex(0);  // raises cbLevel_Click
    LoadIDintoGrid(statements::kLevels.front().condition);
    LoadDescriptionIntoButton();
  } else {
    lblLevel.Visible(false);
    cbLevel.Visible(false);
    cbLevel.ListIndex(0);  // raises cbLevel_Click
    mdWriteINI::WriteINI(settings::touchFile(), settings::kSettings, settings::kItemOne,
                         settings::kItemOneTopLeft);
  }
}

void frmMain::Setlabels(bool StrView) {
  Label2.Visible(StrView);
  cbDept.Visible(StrView);
  Label1.Visible(StrView);
  List1.Visible(StrView);
}

// The keys' width isn't changed. The indexes set as captions show only until the caller loads the
// stock descriptions.
void frmMain::ArrangeButtons() {
  keygeometry::Arrange(keygeometry::ReadSettings(), MyButton1.count(),
                       [this](std::int16_t i, const keygeometry::KeyPosition& position) {
                         MyButton1(i).Top(position.Top);
                         MyButton1(i).Left(position.Left);
                         MyButton1(i).Height(position.Height);
                         MyButton1(i).caption(runtime::toText(i));
                         MyButton1(i).Visible(true);
                       });
}

// A level has exactly 63 rows. With fewer, the read after the last row fails (contract).
void frmMain::LoadIDintoGrid(std::u16string_view strSql) {
  Grid1.Cols(3);
  mdOpenDatabase::OpenDatabase(statements::kMaster);
  StoreRecordset.setNew();
  StoreRecordset->Open(
      std::u16string(statements::kStockHead).append(strSql).append(statements::kStockTail),
      *StoreConnection, mdOpenDatabase::kKeyset, mdOpenDatabase::kPessimistic,
      mdOpenDatabase::kUnspecified);
  for (std::int16_t i = 0; i < MyButton1.count(); ++i) {
    Grid1.TextMatrix(i, 0, runtime::toText(i));
    Grid1.TextMatrix(i, 1, StoreRecordset->Fields(u"id").value().toText());
    Grid1.TextMatrix(i, 2, StoreRecordset->Fields(u"Description").value() & u"");
    StoreRecordset->MoveNext();
  }
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
}

void frmMain::LoadDescriptionIntoButton() {
  for (std::int16_t i = 0; i < MyButton1.count(); ++i) MyButton1(i).caption(Grid1.TextMatrix(i, 2));
}
