#include "Folder.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace bench {

namespace fs = std::filesystem;

Folder::Folder(const fs::path& parent) {
  std::string pattern = parent / "benchXXXXXX";
  if (mkdtemp(pattern.data()) == nullptr)
    throw std::runtime_error("no folder in " + parent.string());
  path_ = pattern;
}

Folder::~Folder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace bench
