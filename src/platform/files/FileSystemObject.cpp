#include "platform/files/FileSystemObject.h"

#include <filesystem>
#include <system_error>

#include "platform/files/ProgramFolder.h"

namespace Scripting {

bool FileSystemObject::FileExists(std::u16string_view path) const {
  std::error_code failure;
  const auto status = std::filesystem::status(files::resolve(path), failure);
  return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace Scripting
