#include "platform/jet/format/EngineError.h"

namespace jet::error {

using runtime::generalError;
using runtime::providerError;
using runtime::ProviderNumber;

runtime::RunTimeError fileMissing(std::u16string_view path) {
  return providerError(ProviderNumber::General, {u"Could not find file '", path, u"'."});
}

runtime::RunTimeError folderMissing(std::u16string_view path) {
  return providerError(
      ProviderNumber::General,
      {u"'", path,
       u"' is not a valid path.  Make sure that the path name is spelled correctly and "
       u"that you are connected to the server on which the file resides."});
}

runtime::RunTimeError fileInUse(std::u16string_view path) {
  return providerError(ProviderNumber::General,
                       {u"Could not use '", path, u"'; file already in use."});
}

runtime::RunTimeError fileNotReadable(std::u16string_view path) {
  return providerError(
      ProviderNumber::General,
      {u"The database engine cannot open the file '", path,
       u"'.  It is already opened exclusively by another user, or you need permission to "
       u"view its data."});
}

runtime::RunTimeError unrecognizedFormat(std::u16string_view path) {
  return providerError(ProviderNumber::General, {u"Unrecognized database format '", path, u"'."});
}

runtime::RunTimeError wrongPassword() {
  return providerError(ProviderNumber::WrongPassword, {u"Not a valid password."});
}

runtime::RunTimeError fileReadOnly() {
  return generalError(u"Cannot update. Database or object is read-only.");
}

runtime::RunTimeError fileLocked() {
  return generalError(u"Could not update; currently locked.");
}

runtime::RunTimeError fileReplaced(std::u16string_view path) {
  return providerError(
      ProviderNumber::General,
      {u"Could not update; '", path, u"' has been deleted or replaced since it was opened."});
}

runtime::RunTimeError diskFull(std::u16string_view path) {
  return providerError(ProviderNumber::General, {u"Not enough space on disk for '", path, u"'."});
}

runtime::RunTimeError diskFailed(std::u16string_view path, std::u16string_view reason) {
  return providerError(ProviderNumber::General,
                       {u"Disk or network error on '", path, u"': ", reason, u"."});
}

runtime::RunTimeError rowChanged() {
  return providerError(
      ProviderNumber::RowChanged,
      {u"Row cannot be located for updating. Some values may have been changed since it "
       u"was last read."});
}

runtime::RunTimeError tooLarge() {
  return providerError(
      ProviderNumber::TooLarge,
      {u"The field is too small to accept the amount of data you attempted to add. Try "
       u"inserting or pasting less data."});
}

runtime::RunTimeError rowTooLarge() {
  return generalError(u"Record is too large.");
}

runtime::RunTimeError fieldNotUpdatable(std::u16string_view field) {
  return providerError(ProviderNumber::General,
                       {u"Cannot update '", field, u"'; field not updateable."});
}

runtime::RunTimeError nullForbidden(std::u16string_view field) {
  return providerError(
      ProviderNumber::General,
      {u"The field '", field,
       u"' cannot contain a Null value because the Required property for this field is "
       u"set to True.  Enter a value in this field."});
}

runtime::RunTimeError emptyTextForbidden(std::u16string_view field) {
  return providerError(ProviderNumber::General,
                       {u"Field '", field, u"' cannot be a zero-length string."});
}

runtime::RunTimeError ruleBroken(std::u16string_view rule, std::u16string_view subject) {
  return providerError(
      ProviderNumber::General,
      {u"One or more values are prohibited by the validation rule '", rule, u"' set for '", subject,
       u"'.  Enter a value that the expression for this field can accept."});
}

runtime::RunTimeError ruleUnusable(std::u16string_view rule, std::u16string_view subject,
                                   std::u16string_view why) {
  return providerError(ProviderNumber::General, {u"The validation rule '", rule, u"' set for '",
                                                 subject, u"' can't be tried: ", why});
}

runtime::RunTimeError nullInIndex() {
  return generalError(u"Index or primary key cannot contain a Null value.");
}

runtime::RunTimeError duplicateKey() {
  return providerError(
      ProviderNumber::General,
      {u"The changes you requested to the table were not successful because they would "
       u"create duplicate values in the index, primary key, or relationship.  Change the "
       u"data in the field or fields that contain duplicate data, remove the index, or "
       u"redefine the index to permit duplicate entries and try again."});
}

runtime::RunTimeError hasRelatedRows(std::u16string_view otherTable) {
  return providerError(ProviderNumber::General,
                       {u"The record cannot be deleted or changed because table '", otherTable,
                        u"' includes related records."});
}

runtime::RunTimeError lacksRelatedRow(std::u16string_view otherTable) {
  return providerError(ProviderNumber::General,
                       {u"You cannot add or change a record because a related record is required "
                        u"in table '",
                        otherTable, u"'."});
}

}  // namespace jet::error
