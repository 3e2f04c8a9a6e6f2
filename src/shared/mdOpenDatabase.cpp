#include "shared/mdOpenDatabase.h"

#include "layoutdata/Statements.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/Recordset.h"

namespace mdOpenDatabase {

std::u16string StoreName;
std::u16string StoreFolder;
std::u16string DatabaseSource;
std::u16string IniFile;
runtime::AutoObject<ADODB::Connection> StoreConnection;
runtime::AutoObject<ADODB::Recordset> StoreRecordset;

void OpenDatabase(std::u16string_view name) {
  if (StoreConnection->State() == ADODB::kStateOpen) CloseDatabase();
  std::u16string connection = u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source= ";
  connection += StoreFolder;
  connection += u"\\";
  connection += name;
  connection += u".mdb;Jet OLEDB:Database Password=";
  connection += layoutdata::statements::kPassword;
  connection += u";Persist Security Info=False";
  StoreConnection->Open(connection, u"", u"", kUnspecified);
  // Set on the open connection: it applies to the recordsets opened from now on.
  StoreConnection->CursorLocation(ADODB::kUseClient);
}

void CloseDatabase() {
  if (StoreConnection->State() != ADODB::kStateOpen) return;
  StoreConnection->Close();
  StoreConnection.setAbsent();
}

}  // namespace mdOpenDatabase
