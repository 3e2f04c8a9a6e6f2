#include "platform/jet/engine/FileWords.h"

#include <string>

#include "platform/jet/format/Damage.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"

namespace jet {
namespace {

using files::FileProblem;

[[noreturn]] void raise(std::u16string words) {
  throw runtime::RunTimeError(kEngineError, std::move(words));
}

std::u16string quoted(std::u16string_view path) {
  return u"'" + std::u16string(path) + u"'";
}

[[noreturn]] void raiseOpening(const files::FileError& error, std::u16string_view path) {
  switch (error.problem()) {
    case FileProblem::Missing:
      raise(u"Could not find file " + quoted(path) + u".");
    case FileProblem::FolderMissing:
      raise(quoted(path) +
            u" is not a valid path.  Make sure that the path name is spelled correctly and that "
            u"you are connected to the server on which the file resides.");
    case FileProblem::Held:
      raise(u"Could not use " + quoted(path) + u"; file already in use.");
    default:
      raise(u"The database engine cannot open the file " + quoted(path) +
            u".  It is already opened exclusively by another user, or you need permission to view "
            u"its data.");
  }
}

[[noreturn]] void raiseUpdating(const files::FileError& error, std::u16string_view path) {
  switch (error.problem()) {
    case FileProblem::Held:
      raise(u"Could not update; currently locked.");
    case FileProblem::NoPermission:
      raise(u"Cannot update. Database or object is read-only.");
    case FileProblem::DiskFull:
      raise(u"Not enough space on disk for " + quoted(path) + u".");
    default:
      raise(u"Disk or network error on " + quoted(path) + u": " +
            runtime::fromUtf8(error.systemReason()) + u".");
  }
}

}  // namespace

void raiseFileProblem(const files::FileError& error, FileWork work, std::u16string_view shownPath) {
  if (work == FileWork::Opening) raiseOpening(error, shownPath);
  raiseUpdating(error, shownPath);
}

}  // namespace jet
