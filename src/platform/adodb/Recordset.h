#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/adodb/Connection.h"
#include "platform/adodb/Field.h"
#include "platform/runtime/Variant.h"

namespace ADODB {

/// The rows of one SELECT, held on the client. Errors named here are those of `ObjectError.h`.
class Recordset {
 public:
  Recordset();
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  /// Runs one SELECT statement in the engine's dialect. Raises the provider's error with the
  /// engine's text for a statement that can't be run; `objectOpen` when the recordset is open
  /// already, `connectionClosed` on a connection that is closed. Whatever the cursor type, the rows
  /// are held on the client; with lock type 1 (read-only) none can be written.
  void Open(std::u16string_view source, Connection& connection, int cursorType, int lockType,
            int options);
  /// Number of rows. Raises `objectClosed` when closed, like all members below except `State`.
  std::int32_t RecordCount() const;
  /// True past the last row. (`EOF` is a macro of the C library.)
  bool Eof() const;
  /// Moves to the next row, after writing the staged values of this one; raises `noCurrentRecord`
  /// when already past the last one.
  void MoveNext();
  /// The column of that name, ignoring letter case; raises `noSuchItem` when the result has none.
  Field Fields(std::u16string_view name);
  /// Number of columns, and the name and the field of each, counted from 0; the name is spelled as
  /// in the statement or the file. A number outside the columns raises `noSuchItem`.
  int FieldCount() const;
  std::u16string FieldName(int column) const;
  Field FieldAt(int column);
  /// Writes the staged values of the current row to the file; the row stays current and reads as
  /// written. Raises the engine's error when a value is refused. Each table's row is
  /// written on its own: rows written before the refused one stay written.
  void Update();
  /// Releases the result. Raises `objectClosed` when it isn't open, `valueStaged` when a value is
  /// staged and not written.
  void Close();
  int State() const;

 private:
  friend class Field;
  struct Rows;
  /// The rows of the open result; raises `objectClosed` when it is closed, or its connection is.
  Rows& open() const;
  /// The same, with a current row; raises `noCurrentRecord` without one.
  Rows& current() const;
  runtime::Variant value(int column) const;
  void stage(int column, runtime::Variant value);

  std::unique_ptr<Rows> rows_;
};

}  // namespace ADODB
