#pragma once

#include <string_view>

#include "platform/runtime/ProviderError.h"

/// The engine's errors, each with its number and text, to be thrown. `Damage.h` adds those about a
/// damaged file, `runtime/ProviderError.h` those that `jetsql` raises too.
namespace jet::error {

// Opening a file. `path` is the path as the user knows it.
runtime::RunTimeError fileMissing(std::u16string_view path);
runtime::RunTimeError folderMissing(std::u16string_view path);
runtime::RunTimeError fileInUse(std::u16string_view path);
runtime::RunTimeError fileNotReadable(std::u16string_view path);
runtime::RunTimeError unrecognizedFormat(std::u16string_view path);
runtime::RunTimeError wrongPassword();

// Writing to it.
runtime::RunTimeError fileReadOnly();
runtime::RunTimeError fileLocked();
runtime::RunTimeError fileReplaced(std::u16string_view path);
runtime::RunTimeError diskFull(std::u16string_view path);
/// `reason` is the operating system's text.
runtime::RunTimeError diskFailed(std::u16string_view path, std::u16string_view reason);

// Refused changes of a row. `field` is the name of a column.
runtime::RunTimeError rowChanged();
runtime::RunTimeError tooLarge();
runtime::RunTimeError rowTooLarge();
runtime::RunTimeError fieldNotUpdatable(std::u16string_view field);
/// Here `field` is "table.column".
runtime::RunTimeError nullForbidden(std::u16string_view field);
/// Here `field` is "table.column".
runtime::RunTimeError emptyTextForbidden(std::u16string_view field);
/// A broken validation rule that has no text of its own; `subject` is "table.column" or the table.
runtime::RunTimeError ruleBroken(std::u16string_view rule, std::u16string_view subject);
/// A validation rule that can't be evaluated; `why` is a full sentence.
runtime::RunTimeError ruleUnusable(std::u16string_view rule, std::u16string_view subject,
                                   std::u16string_view why);
runtime::RunTimeError nullInIndex();
runtime::RunTimeError duplicateKey();
runtime::RunTimeError hasRelatedRows(std::u16string_view otherTable);
runtime::RunTimeError lacksRelatedRow(std::u16string_view otherTable);

}  // namespace jet::error
