#include "platform/adodb/ObjectError.h"

#include "platform/runtime/ProviderError.h"

namespace ADODB::error {

runtime::RunTimeError noCurrentRecord() {
  return {3021,
          u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
          u"requires a current record."};
}

runtime::RunTimeError noSuchItem() {
  return {
      3265,
      u"Item cannot be found in the collection corresponding to the requested name or ordinal."};
}

runtime::RunTimeError objectClosed() {
  return {3704, u"Operation is not allowed when the object is closed."};
}

runtime::RunTimeError objectOpen() {
  return {3705, u"Operation is not allowed when the object is open."};
}

runtime::RunTimeError connectionClosed() {
  return {
      3709,
      u"The connection cannot be used to perform this operation. It is either closed or invalid "
      u"in this context."};
}

runtime::RunTimeError notUpdatable() {
  return runtime::providerError(
      runtime::ProviderNumber::NotCapable,
      {u"Current Recordset does not support updating. This may be a limitation of the provider, or "
       u"of the selected locktype."});
}

runtime::RunTimeError valueStaged() {
  return {3219, u"Operation is not allowed in this context."};
}

runtime::RunTimeError noSuchProvider() {
  return {3706, u"Provider cannot be found. It may not be properly installed."};
}

runtime::RunTimeError wrongArgument() {
  return {3001,
          u"Arguments are of the wrong type, are out of acceptable range, or are in conflict with "
          u"one another."};
}

}  // namespace ADODB::error
