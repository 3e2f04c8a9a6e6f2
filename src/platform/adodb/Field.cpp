#include "platform/adodb/Field.h"

#include <utility>

#include "platform/adodb/Recordset.h"

namespace ADODB {

runtime::Variant Field::value() const {
  return owner_->value(column_);
}

void Field::value(runtime::Variant staged) {
  owner_->stage(column_, std::move(staged));
}

}  // namespace ADODB
