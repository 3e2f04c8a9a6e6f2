#include "platform/adodb/Connection.h"

#include "platform/adodb/ConnectionString.h"
#include "platform/adodb/ObjectError.h"
#include "platform/files/ProgramFolder.h"
#include "platform/jetsql/sqlite/Session.h"
#include "platform/runtime/CodePage.h"

namespace ADODB {

Connection::Connection() = default;
Connection::~Connection() = default;

void Connection::Open(std::u16string_view connectionString, std::u16string_view /*userId*/,
                      std::u16string_view /*password*/, int /*options*/) {
  if (session_) throw error::objectOpen();
  const ConnectionString wanted(connectionString);
  if (wanted.provider != u"Microsoft.Jet.OLEDB.4.0") throw error::noSuchProvider();
  const std::filesystem::path file = files::resolve(wanted.dataSource);
  // The engine's texts name the file by its path on this system, for use in other tools.
  session_ = std::make_shared<jetsql::Session>(file, runtime::fromUtf8(file.native()),
                                               wanted.databasePassword);
}

int Connection::State() const {
  return session_ ? kStateOpen : kStateClosed;
}

void Connection::CursorLocation(int location) {
  if (location != kUseServer && location != kUseClient) throw error::wrongArgument();
  cursorLocation_ = location;
}

void Connection::Close() {
  if (!session_) throw error::objectClosed();
  session_.reset();
}

}  // namespace ADODB
