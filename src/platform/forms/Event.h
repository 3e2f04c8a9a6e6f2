#pragma once

#include <functional>

namespace forms {

/// An event of a control. The screen sets the handler. The control calls it through the dispatcher
/// when the user acts, and directly, nested in the setter, when code sets a value.
template <class... Arguments>
using Event = std::function<void(Arguments...)>;

}  // namespace forms
