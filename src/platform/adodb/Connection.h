#pragma once

#include <memory>
#include <string_view>

namespace jetsql {
class Session;
}

namespace ADODB {

/// States of a connection or recordset.
inline constexpr int kStateClosed = 0;
inline constexpr int kStateOpen = 1;
/// Cursor locations.
inline constexpr int kUseServer = 2;
inline constexpr int kUseClient = 3;

/// A connection to one store database.
class Connection {
 public:
  Connection();
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Opens the password-protected file that the connection string names. Raises the provider's
  /// error for a missing file or folder, a wrong password, a file that is no database, and a file
  /// that another program holds exclusively; `objectOpen` when it is open already, `noSuchProvider`
  /// for an unknown provider (see `ObjectError.h`). User id, password and options are ignored: the
  /// file has no users of its own.
  void Open(std::u16string_view connectionString, std::u16string_view userId,
            std::u16string_view password, int options);
  /// kStateOpen while open, else kStateClosed.
  int State() const;
  /// Sets the cursor location for recordsets opened from now on; raises `wrongArgument` for an
  /// unknown one. It is only stored: rows are always held on the client.
  void CursorLocation(int location);
  int CursorLocation() const { return cursorLocation_; }
  /// Closes the connection and all recordsets opened on it. Raises `objectClosed` when it isn't
  /// open.
  void Close();

 private:
  friend class Recordset;

  std::shared_ptr<jetsql::Session> session_;
  int cursorLocation_ = kUseServer;
};

}  // namespace ADODB
