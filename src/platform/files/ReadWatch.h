#pragma once

#include <functional>

namespace files {

/// Sets the function that is called before each read at an offset of a file; empty (the default)
/// for none. Reads are what a user waits for where the file is on a file server.
void onRead(std::function<void()> call);

/// Calls that function. For this library's files.
void announceRead();

}  // namespace files
