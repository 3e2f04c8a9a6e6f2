#pragma once

#include <memory>

namespace process {
class Host;
}

namespace forms {

/// Creates the product's host: it shows real message boxes, the platform's colour dialog and the
/// failure report, starts programs and ends the process.
std::unique_ptr<process::Host> makeHost();

}  // namespace forms
