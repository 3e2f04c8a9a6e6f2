#include "AddedProduct.h"

#include "layoutdata/Statements.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdOpenDatabase.h"

namespace sharedtest {
namespace {

namespace statements = layoutdata::statements;
using mdOpenDatabase::StoreRecordset;

void openStatement(const std::u16string& statement) {
  StoreRecordset.setNew();
  StoreRecordset->Open(statement, *mdOpenDatabase::StoreConnection, mdOpenDatabase::kKeyset,
                       mdOpenDatabase::kPessimistic, mdOpenDatabase::kUnspecified);
}

void closeStatement() {
  StoreRecordset->Close();
  StoreRecordset.setAbsent();
}

}  // namespace

std::optional<std::int32_t> addProduct(const std::string& name) {
  mdOpenDatabase::OpenDatabase(statements::kMaster);
  openStatement(std::u16string(statements::kFreeSlots));
  if (StoreRecordset->RecordCount() == 0) {
    closeStatement();
    mdOpenDatabase::CloseDatabase();
    return std::nullopt;
  }
  StoreRecordset->Fields(u"description").value(runtime::fromUtf8(name));
  StoreRecordset->Fields(u"price").value(1.25);
  StoreRecordset->Fields(u"deptid").value(u"3");
  StoreRecordset->Update();
  const std::int32_t id = StoreRecordset->Fields(u"id").value().toLong();
  closeStatement();
  openStatement(std::u16string(statements::kFlags).append(runtime::toText(id)));
  for (const char16_t* flag : {u"PRINTER1", u"PRINTER2", u"OPEN_PLU", u"ITEM_TYPE", u"NEG_PRICE"})
    StoreRecordset->Fields(flag).value(std::int16_t{1});
  StoreRecordset->Update();
  closeStatement();
  mdOpenDatabase::CloseDatabase();
  return id;
}

void forgetSession() {
  StoreRecordset.setAbsent();
  mdOpenDatabase::StoreConnection.setAbsent();
}

}  // namespace sharedtest
