#pragma once

#include <string_view>

namespace files {

/// Deletes a file. Raises FileNotFound or PathNotFound when it is missing, PathFileAccess when it
/// can't be deleted: a folder, a file that is read-only for this user, a folder that may not be
/// changed.
void kill(std::u16string_view path);

}  // namespace files
