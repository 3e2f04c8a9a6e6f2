#pragma once

#include <cstdint>
#include <string_view>

#include "platform/runtime/RunTimeError.h"

/// The engine's errors, each with its number and text, to be thrown. `Damage.h` adds those about a
/// damaged file.
namespace jet::error {

inline constexpr std::int32_t kRowChanged = -2147217864;
inline constexpr std::int32_t kMismatch = -2147217913;  ///< incompatible types
inline constexpr std::int32_t kTooLarge = -2147217833;
inline constexpr std::int32_t kWrongPassword = -2147217843;
/// The general error: a failure without a number of its own.
inline constexpr std::int32_t kGeneral = -2147467259;

/// The general error with that text.
runtime::RunTimeError general(std::u16string_view words);

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
runtime::RunTimeError mismatch();
runtime::RunTimeError tooLarge();
runtime::RunTimeError rowTooLarge();
runtime::RunTimeError notUpdateable(std::u16string_view field);
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
