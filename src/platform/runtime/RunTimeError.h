#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace runtime {

/// Numbers of the platform's own run-time errors, as the failure report shows them.
enum class ErrorNumber : std::int32_t {
  InvalidProcedureCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  InternalError = 51,
  FileNotFound = 53,
  BadFileMode = 54,
  DeviceIoError = 57,
  DiskFull = 61,
  InputPastEnd = 62,
  PermissionDenied = 70,
  PathFileAccess = 75,
  PathNotFound = 76,
  InvalidUseOfNull = 94,
  InvalidPropertyValue = 380,
};

/// The platform's own text for a number, for example "Type mismatch".
std::u16string_view errorText(ErrorNumber number);

/// The one exception type of the program: a number and the text that the failure report shows. The
/// number is an `ErrorNumber`, a `ProviderNumber` or one of `ADODB::error`.
class RunTimeError : public std::exception {
 public:
  /// A platform error with the platform's own text.
  explicit RunTimeError(ErrorNumber number);
  /// An error with a text of its own, such as the database provider's errors.
  RunTimeError(std::int32_t number, std::u16string text);

  std::int32_t number() const { return number_; }
  const std::u16string& text() const { return text_; }
  /// Number and text as UTF-8, for logs and test output.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::int32_t number_;
  std::u16string text_;
  std::string what_;
};

}  // namespace runtime
