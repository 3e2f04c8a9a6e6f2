#pragma once

#include <QLibrary>

namespace forms::qt {

/// A function of a library that the program doesn't link, since the toolkit brings it only where it
/// is needed; null where the library or the function is missing.
template <class Function>
Function* libraryFunction(const char* library, int version, const char* name) {
  return reinterpret_cast<Function*>(
      QLibrary::resolve(QString::fromLatin1(library), version, name));
}

}  // namespace forms::qt
