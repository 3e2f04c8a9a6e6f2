#pragma once

#include <functional>

namespace files {

/// Sets what is called before each read at an offset of a file: on a file server, reads are what a
/// user waits for. Empty (the default) for nothing.
void onRead(std::function<void()> call);

/// Calls it. For this library's files.
void announceRead();

}  // namespace files
