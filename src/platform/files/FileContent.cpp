#include "platform/files/FileContent.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <span>

#include "platform/files/ByteFile.h"
#include "platform/files/FolderLock.h"
#include "platform/files/seam/FaultSeam.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using Access = ByteFile::Access;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// The file that a path names: a link is followed where it leads to a file.
fs::path targetOf(const fs::path& path) {
  std::error_code failure;
  const fs::path real = fs::canonical(path, failure);
  return failure ? path : real;
}

/// Returns when the folder's entries have reached the disk. Does nothing where this user may not
/// open the folder, or where its file system can't sync one (EINVAL).
void syncFolder(const fs::path& folder) {
  allowedBytes({FileStep::Kind::Sync, folder});
  const int descriptor =
      ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  const int problem = ::fsync(descriptor) == 0 ? 0 : errno;
  ::close(descriptor);
  if (problem != 0 && problem != EINVAL) raiseFileError(folder, problem, FilePurpose::Write);
}

fs::path temporaryBeside(const fs::path& target) {
  std::uint32_t number = 0;
  if (::getentropy(&number, sizeof number) != 0) raiseFileError(target, errno, FilePurpose::Write);
  return target.parent_path() /
         ("." + target.filename().string() + "." + std::to_string(number) + ".tmp");
}

/// Removes temporary files that interrupted writes of this file have left. A temporary file of a
/// write in progress is younger than a minute.
void removeLeftovers(const fs::path& target) {
  const std::string head = "." + target.filename().string() + ".";
  const auto old = fs::file_time_type::clock::now() - std::chrono::minutes(1);
  std::error_code ignored;
  for (fs::directory_iterator entry(target.parent_path(), ignored);
       entry != fs::directory_iterator(); entry.increment(ignored)) {
    const std::string name = entry->path().filename().string();
    const bool isTemporary = name.starts_with(head) && name.ends_with(".tmp");
    if (isTemporary && entry->last_write_time(ignored) < old) fs::remove(entry->path(), ignored);
  }
}

/// A file with a unique name that is removed again unless it has replaced another file.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target)
      : path_(temporaryBeside(target)), file_(path_, Access::New) {}
  ~TemporaryFile() {
    if (!moved_) ::unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// Sets owner and permissions to those of another file; false where this user may not.
  bool copyOwnerAndMode(const struct stat& other) {
    return ::fchown(file_.descriptor(), other.st_uid, other.st_gid) == 0 &&
           ::fchmod(file_.descriptor(), other.st_mode & 07777U) == 0;
  }

  void write(std::string_view bytes) {
    file_.writeAt(0, bytesOf(bytes));
    file_.sync();
    file_.close();
  }

  void moveTo(const fs::path& target) {
    allowedBytes({FileStep::Kind::Rename, target});
    if (std::rename(path_.c_str(), target.c_str()) != 0)
      raiseFileError(target, errno, FilePurpose::Write);
    moved_ = true;
    syncFolder(target.parent_path());
  }

 private:
  fs::path path_;
  ByteFile file_;
  bool moved_ = false;
};

/// Replaces the file by a new one through a temporary file. Returns false and changes nothing when
/// the old file has several hard links, when its owner or permissions can't be copied, or when the
/// folder isn't writable.
bool replaceByAnother(const fs::path& target, const struct stat* old, std::string_view bytes) {
  if (old != nullptr && old->st_nlink > 1) return false;
  removeLeftovers(target);
  try {
    TemporaryFile temporary(target);
    if (old != nullptr && !temporary.copyOwnerAndMode(*old)) return false;
    temporary.write(bytes);
    temporary.moveTo(target);
    return true;
  } catch (const FileError& error) {
    if (error.problem() != FileProblem::NoPermission) throw;
    return false;
  }
}

/// Replaces the file's content by `bytes`, or overwrites a file that can't be replaced.
void replaceContent(const fs::path& path, std::string_view bytes) {
  const fs::path target = targetOf(path);
  struct stat old {};
  const bool isThere = ::stat(target.c_str(), &old) == 0;
  // Raises the error where this user may not write the file at all.
  if (isThere) ByteFile(target, Access::ReadWrite).close();
  std::error_code ignored;
  const bool danglingLink = !isThere && fs::is_symlink(fs::symlink_status(target, ignored));
  if (!danglingLink && replaceByAnother(target, isThere ? &old : nullptr, bytes)) return;
  ByteFile file(target, Access::Output);
  file.writeAt(0, bytesOf(bytes));
  file.sync();
  file.close();
}

}  // namespace

std::optional<std::string> readContent(const fs::path& path) {
  try {
    const ByteFile file(path, Access::ReadOnly);
    if (file.size() > kContentLimit)
      raiseFileError(path, EINVAL, FilePurpose::Read);  // PathFileAccess
    std::string bytes(file.size(), '\0');
    bytes.resize(file.readAt(0, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}));
    return bytes;
  } catch (const FileError& error) {
    const bool absent =
        error.problem() == FileProblem::Missing || error.problem() == FileProblem::FolderMissing;
    if (!absent) throw;
    return std::nullopt;
  }
}

void changeContent(const fs::path& path,
                   const std::function<std::string(std::string bytes)>& change) {
  const FolderLock lock(targetOf(path).parent_path());
  replaceContent(path, change(readContent(path).value_or("")));
}

}  // namespace files
