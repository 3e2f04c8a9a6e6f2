#include "platform/files/FileError.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace files {

using runtime::ErrorNumber;

FileError::FileError(ErrorNumber number, FileProblem problem, std::filesystem::path path,
                     int systemError)
    : RunTimeError(number), problem_(problem), path_(std::move(path)), systemError_(systemError) {}

std::string FileError::systemReason() const {
  return systemError_ == 0 ? std::string() : std::generic_category().message(systemError_);
}

void raiseFileError(const std::filesystem::path& path, int systemError, FilePurpose purpose) {
  const auto raise = [&](ErrorNumber number, FileProblem problem) {
    throw FileError(number, problem, path, systemError);
  };
  switch (systemError) {
    case ENOENT: {
      std::error_code ignored;
      if (std::filesystem::is_directory(path.parent_path(), ignored))
        raise(ErrorNumber::FileNotFound, FileProblem::Missing);
      raise(ErrorNumber::PathNotFound, FileProblem::FolderMissing);
      break;
    }
    case ENOTDIR:
      raise(ErrorNumber::PathNotFound, FileProblem::FolderMissing);
      break;
    case EACCES:
    case EPERM:
    case EROFS:
      raise(purpose == FilePurpose::Read ? ErrorNumber::PermissionDenied
                                         : ErrorNumber::PathFileAccess,
            FileProblem::NoPermission);
      break;
    case EISDIR:
    case ENXIO:
    case ENODEV:
      raise(ErrorNumber::PathFileAccess, FileProblem::NotAFile);
      break;
    case EEXIST:
    case EINVAL:
    case ELOOP:
    case ENAMETOOLONG:
    case ETXTBSY:
      raise(ErrorNumber::PathFileAccess, FileProblem::Other);
      break;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      raise(ErrorNumber::DiskFull, FileProblem::DiskFull);
      break;
    default:
      break;
  }
  throw FileError(ErrorNumber::DeviceIoError, FileProblem::Other, path, systemError);
}

}  // namespace files
