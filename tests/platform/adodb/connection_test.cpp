#include <gtest/gtest.h>

#include "TestStore.h"
#include "platform/files/ProgramFolder.h"

namespace adodbtest {
namespace {

using ADODB::Connection;
using ADODB::Recordset;

std::u16string inFolder(std::u16string_view path) {
  return files::programFolder() + std::u16string(path);
}

std::string openFailure(std::u16string_view connection) {
  return failureOf([&] { Connection().Open(connection, u"", u"", -1); });
}

TEST(Connection, OpensTheFileThatItsStringNames) {
  const TestStore store(smallShop());
  for (const std::u16string& text : {connectionString(inFolder(u"\\Stores\\Demo\\Master.mdb")),
                                     connectionString(inFolder(u"\\stores\\\\DEMO\\MASTER.MDB")),
                                     u"data source =\"" + inFolder(u"\\Stores\\Demo\\MASTER.mdb") +
                                         u"\" ; PROVIDER = Microsoft.Jet.OLEDB.4.0;"
                                         u"jet oledb:database password='w7rt3q8814Z'"}) {
    Connection connection;
    EXPECT_EQ(connection.State(), ADODB::kStateClosed);
    connection.Open(text, u"", u"", -1);
    EXPECT_EQ(connection.State(), ADODB::kStateOpen);
    connection.Close();
    EXPECT_EQ(connection.State(), ADODB::kStateClosed);
  }
}

TEST(Connection, FailsWithTheProvidersTexts) {
  const TestStore store(smallShop());
  const std::u16string path = inFolder(u"\\Stores\\Demo\\MASTER.mdb");
  EXPECT_EQ(openFailure(connectionString(path, u"wrong")), "-2147217843: Not a valid password.");
  EXPECT_EQ(openFailure(connectionString(path, u"W7RT3Q8814Z")),
            "-2147217843: Not a valid password.");
  EXPECT_EQ(openFailure(connectionString(path, u"")), "-2147217843: Not a valid password.");
  // Errors name the file by its path on this system.
  const std::string stores = store.folder().path() / "Stores";
  EXPECT_EQ(openFailure(connectionString(inFolder(u"\\stores\\demo\\Other.mdb"))),
            "-2147467259: Could not find file '" + stores + "/Demo/Other.mdb'.");
  const std::u16string nowhere = inFolder(u"\\Stores\\Nowhere\\MASTER.mdb");
  EXPECT_EQ(openFailure(connectionString(nowhere)),
            "-2147467259: '" + stores +
                "/Nowhere/MASTER.mdb' is not a valid path.  Make sure that the path name is "
                "spelled correctly and "
                "that you are connected to the server on which the file resides.");
  const std::string cut = support::readFile(store.file()).value().substr(0, 9000);
  for (const std::string& bytes : {std::string(), std::string(20000, 'x'), cut}) {
    store.folder().write("Stores/text.mdb", bytes);
    EXPECT_EQ(openFailure(connectionString(inFolder(u"\\Stores\\text.mdb"))),
              "-2147467259: Unrecognized database format '" + stores + "/text.mdb'.");
  }
  EXPECT_EQ(openFailure(u"Provider=Other;Data Source=" + path),
            "3706: Provider cannot be found. It may not be properly installed.");
}

TEST(Connection, RefusesCallsThatDoNotFitItsState) {
  const TestStore store(smallShop());
  Connection connection;
  EXPECT_EQ(errorNumberOf([&] { connection.Close(); }), 3704);
  Recordset rows;
  EXPECT_EQ(errorNumberOf([&] { rows.Open(u"select id from tblStock", connection, 1, 2, -1); }),
            3709);
  store.open(connection);
  EXPECT_EQ(errorNumberOf([&] { store.open(connection); }), 3705);
  EXPECT_EQ(errorNumberOf([&] { connection.CursorLocation(4); }), 3001);
  EXPECT_EQ(connection.CursorLocation(), ADODB::kUseClient);
  rows.Open(u"select id from tblStock", connection, 1, 2, -1);
  connection.Close();
  EXPECT_EQ(rows.State(), ADODB::kStateClosed);
  EXPECT_EQ(errorNumberOf([&] { (void)rows.Eof(); }), 3704);
}

}  // namespace
}  // namespace adodbtest
