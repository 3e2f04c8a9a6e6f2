#include "platform/files/ProgramFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/auxv.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Text.h"

namespace files {
namespace {

namespace fs = std::filesystem;

fs::path& programFile() {
  static fs::path path = "/program";  // default for tools, which pass absolute paths only
  return path;
}

/// The path without its "." parts. ".." stays: after a link it names the parent of the link's
/// target.
fs::path withoutDots(const fs::path& path) {
  fs::path result;
  for (const fs::path& piece : path)
    if (piece != ".") result /= piece;
  return result;
}

std::vector<std::u16string_view> namesIn(std::u16string_view path) {
  std::vector<std::u16string_view> names;
  constexpr std::u16string_view kSeparators = u"\\/";
  for (std::size_t begin = path.find_first_not_of(kSeparators); begin != path.npos;) {
    const std::size_t end = std::min(path.find_first_of(kSeparators, begin), path.size());
    names.push_back(path.substr(begin, end - begin));
    begin = path.find_first_not_of(kSeparators, end);
  }
  return names;
}

/// Calls `use` with the name of each entry of the folder; with none where there is no such folder.
/// Each session lists the folders of its file's path, so this makes as few system calls as
/// possible.
template <class Use>
void forEachName(const char* folder, Use use) {
  const int descriptor = ::open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  alignas(dirent64) std::array<char, 8192> entries{};
  for (ssize_t size = 0; (size = ::getdents64(descriptor, entries.data(), entries.size())) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto* entry = reinterpret_cast<const dirent64*>(entries.data() + at);
      use(std::string_view(entry->d_name));
      at += entry->d_reclen;
    }
  }
  ::close(descriptor);
}

bool beginsWithFolder(std::u16string_view path, std::u16string_view folder) {
  if (!path.starts_with(folder)) return false;
  return path.size() == folder.size() || path[folder.size()] == u'\\' ||
         path[folder.size()] == u'/';
}

}  // namespace

fs::path startedProgram() {
  const auto* const path = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
  return path == nullptr ? fs::path() : fs::path(path);
}

void setProgramFile(const fs::path& started) {
  // Fails where the current folder has been removed.
  std::error_code unknown;
  const fs::path absolute = fs::absolute(started, unknown);
  programFile() = withoutDots(unknown ? started : absolute);
}

std::u16string programFolder() {
  std::u16string folder = runtime::fromUtf8(programFile().parent_path().native());
  while (folder.ends_with(u'/')) folder.pop_back();
  return folder;
}

fs::path findEntry(const fs::path& folder, std::u16string_view name) {
  const std::u16string wanted = runtime::foldCase(name);
  std::string found;
  forEachName(folder.empty() ? "." : folder.c_str(), [&](std::string_view candidate) {
    // A UTF-16 unit takes one to three UTF-8 bytes: the length excludes most names without
    // decoding.
    if (candidate.size() < wanted.size() || candidate.size() > 3 * wanted.size()) return;
    if (!found.empty() && found < candidate) return;
    if (runtime::foldCase(runtime::fromUtf8(candidate)) == wanted) found = candidate;
  });
  return folder / (found.empty() ? runtime::toUtf8(name) : found);
}

fs::path resolve(std::u16string_view path) {
  const std::u16string folder = programFolder();
  fs::path resolved;
  if (beginsWithFolder(path, folder)) {
    // The path's original bytes, which need not be valid UTF-8.
    resolved = programFile().parent_path();
    path.remove_prefix(folder.size());
  } else if (path.starts_with(u'/')) {
    resolved = "/";
  }
  for (const std::u16string_view name : namesIn(path)) resolved = findEntry(resolved, name);
  return resolved;
}

}  // namespace files
