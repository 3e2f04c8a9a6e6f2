#include "platform/jet/engine/FileOperation.h"

#include "platform/files/FileError.h"
#include "platform/jet/format/EngineError.h"
#include "platform/runtime/CodePage.h"

namespace jet {
namespace {

using files::FileProblem;

runtime::RunTimeError openingError(FileProblem problem, std::u16string_view path) {
  switch (problem) {
    case FileProblem::Missing:
      return error::fileMissing(path);
    case FileProblem::FolderMissing:
      return error::folderMissing(path);
    case FileProblem::Held:
      return error::fileInUse(path);
    case FileProblem::NoPermission:
    case FileProblem::NotAFile:
    case FileProblem::DiskFull:
    case FileProblem::Other:
      break;
  }
  return error::fileNotReadable(path);
}

runtime::RunTimeError updatingError(const files::FileError& failure, std::u16string_view path) {
  switch (failure.problem()) {
    case FileProblem::Held:
      return error::fileLocked();
    case FileProblem::NoPermission:
      return error::fileReadOnly();
    case FileProblem::DiskFull:
      return error::diskFull(path);
    case FileProblem::Missing:
    case FileProblem::FolderMissing:
    case FileProblem::NotAFile:
    case FileProblem::Other:
      break;
  }
  return error::diskFailed(path, runtime::fromUtf8(failure.systemReason()));
}

}  // namespace

void rethrowAsEngineError(FileOperation work, std::u16string_view shownPath) {
  try {
    throw;
  } catch (const files::FileError& failure) {
    if (work == FileOperation::Opening) throw openingError(failure.problem(), shownPath);
    throw updatingError(failure, shownPath);
  }
}

}  // namespace jet
