#pragma once

#include <memory>

#include "platform/process/Host.h"

namespace forms {

/// The product's host: real message boxes, the platform's colour dialog, the failure report,
/// programs that are really started, and an end that doesn't return.
std::unique_ptr<process::Host> makeHost();

}  // namespace forms
