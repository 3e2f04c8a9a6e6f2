#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/AutoObject.h"

namespace ADODB {
class Connection;
class Recordset;
}  // namespace ADODB

/// The store's name and folder, and the program's only connection and recordset. A database session
/// is short: open, one or two statements, close. The file isn't kept open between user actions.
namespace mdOpenDatabase {

/// Name of this store: a folder below the stores folder.
extern std::u16string StoreName;
/// Program folder, "\Stores\" and the store's name: the folder of every database that is opened.
extern std::u16string StoreFolder;
/// Result of the "dbsource" read. Never used: contract.
extern std::u16string DatabaseSource;
/// The file of the "dbsource" read. Never set, so the read returns its default.
extern std::u16string IniFile;

/// Absent between sessions.
extern runtime::AutoObject<ADODB::Connection> StoreConnection;
extern runtime::AutoObject<ADODB::Recordset> StoreRecordset;

/// Arguments of `StoreRecordset->Open`: cursor types, the lock type and the options that are used.
inline constexpr int kForwardOnly = 0;
inline constexpr int kKeyset = 1;
inline constexpr int kPessimistic = 2;
inline constexpr int kUnspecified = -1;

/// Opens `StoreConnection` on the database `name` of this store, after closing it if it is open.
/// Raises the provider's error when the file can't be opened.
void OpenDatabase(std::u16string_view name);

/// Closes the connection and sets it to absent. Does nothing if it isn't open, except that
/// asking for its state creates the object if it is absent.
void CloseDatabase();

}  // namespace mdOpenDatabase
