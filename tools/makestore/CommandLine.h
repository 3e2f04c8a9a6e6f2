#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "makestore/ShopStore.h"

namespace makestore {

/// The options of the command line.
struct Request {
  std::filesystem::path output;
  ShopOptions options;
  bool help = false;
};

/// A command line that is invalid; the text says why.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The tool's usage, for `--help`.
std::string_view usage();
/// Reads the arguments after the program's name. Raises UsageError, and a FileError for a file that
/// can't be read.
Request parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace makestore
