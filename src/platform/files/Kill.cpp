#include "platform/files/Kill.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/files/ByteFile.h"
#include "platform/files/ProgramFolder.h"
#include "platform/files/seam/FaultSeam.h"

namespace files {

void kill(std::u16string_view path) {
  const std::filesystem::path file = resolve(path);
  std::error_code ignored;
  const bool isThere = std::filesystem::is_regular_file(file, ignored);
  // A read-only file may not be deleted either: opening it for writing raises the error.
  if (isThere) ByteFile(file, ByteFile::Access::ReadWrite).close();
  allowedBytes({FileStep::Kind::Delete, file});
  if (::unlink(file.c_str()) != 0) raiseFileError(file, errno, FilePurpose::Write);
}

}  // namespace files
