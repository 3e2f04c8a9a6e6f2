#include "platform/runtime/RunTimeError.h"

#include <utility>

#include "platform/runtime/CodePage.h"

namespace runtime {

std::u16string_view errorText(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall:
      return u"Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return u"Overflow";
    case ErrorNumber::OutOfMemory:
      return u"Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
      return u"Subscript out of range";
    case ErrorNumber::TypeMismatch:
      return u"Type mismatch";
    case ErrorNumber::InternalError:
      return u"Internal error";
    case ErrorNumber::FileNotFound:
      return u"File not found";
    case ErrorNumber::BadFileMode:
      return u"Bad file mode";
    case ErrorNumber::DeviceIoError:
      return u"Device I/O error";
    case ErrorNumber::DiskFull:
      return u"Disk full";
    case ErrorNumber::InputPastEnd:
      return u"Input past end of file";
    case ErrorNumber::PermissionDenied:
      return u"Permission denied";
    case ErrorNumber::PathFileAccess:
      return u"Path/File access error";
    case ErrorNumber::PathNotFound:
      return u"Path not found";
    case ErrorNumber::InvalidUseOfNull:
      return u"Invalid use of Null";
    case ErrorNumber::InvalidPropertyValue:
      return u"Invalid property value";
  }
  return u"Internal error";
}

RunTimeError::RunTimeError(ErrorNumber number)
    : RunTimeError(static_cast<std::int32_t>(number), std::u16string(errorText(number))) {}

RunTimeError::RunTimeError(std::int32_t number, std::u16string text)
    : number_(number),
      text_(std::move(text)),
      what_(std::to_string(number_) + ": " + toUtf8(text_)) {}

}  // namespace runtime
