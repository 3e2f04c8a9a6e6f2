#pragma once

#include <functional>

namespace files {

/// Sets the function that is called before each `ByteFile::readAt`; empty (the default) for none.
/// `forms` uses it to show the wait pointer: reads can be slow when the file is on a file server.
void onRead(std::function<void()> call);

/// Calls that function. For use inside this library only.
void callReadWatch();

}  // namespace files
