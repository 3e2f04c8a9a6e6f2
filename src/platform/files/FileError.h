#pragma once

#include <filesystem>
#include <string>

#include "platform/runtime/RunTimeError.h"

namespace files {

/// Why the host system refused a file.
enum class FileProblem {
  Missing,        ///< no such file; its folder exists
  FolderMissing,  ///< the folder doesn't exist, or a part of its path is no folder
  NoPermission,   ///< also a write to a file or disk that is read-only
  NotAFile,       ///< a folder, a device, a pipe
  Held,           ///< another program holds the file's lock
  DiskFull,
  Other,
};

/// A failed file operation: a run-time error with the platform's number and text, plus the reason
/// for callers that report their own text.
class FileError : public runtime::RunTimeError {
 public:
  FileError(runtime::ErrorNumber number, FileProblem problem, std::filesystem::path path,
            int systemError);

  FileProblem problem() const { return problem_; }
  const std::filesystem::path& path() const { return path_; }
  /// The system's message for its error number, for example "No such file or directory"; empty
  /// where there is no number.
  std::string systemReason() const;

 private:
  FileProblem problem_;
  std::filesystem::path path_;
  int systemError_;
};

/// The intended use of a file; the platform's error number for a refusal depends on it.
enum class FilePurpose { Read, Write };

/// Raises the error for the system's error number (`errno`) of a failed use of the file.
[[noreturn]] void raiseFileError(const std::filesystem::path& path, int systemError,
                                 FilePurpose purpose);

}  // namespace files
