#pragma once

#include <string_view>

namespace Scripting {

/// The one file-system query that the screens make.
class FileSystemObject {
 public:
  /// True for a file (not a folder) that exists at the path.
  bool FileExists(std::u16string_view path) const;
};

}  // namespace Scripting
