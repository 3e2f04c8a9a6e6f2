#pragma once

#include "platform/runtime/Variant.h"

namespace ADODB {

class Recordset;

/// One column of a recordset's current row. Errors named here are those of `ObjectError.h`.
class Field {
 public:
  /// The column's value in the current row; null for a null. Raises `noCurrentRecord`.
  runtime::Variant value() const;
  /// Stages a new value for the current row. Raises `noCurrentRecord`, and `notUpdatable` where the
  /// column can't be updated.
  void value(runtime::Variant staged);

 private:
  friend class Recordset;
  Field(Recordset& owner, int column) : owner_(&owner), column_(column) {}

  Recordset* owner_;
  int column_;
};

}  // namespace ADODB
