#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace sharedtest {

/// Fills the first free slot of the store as the product sheet does: the name, a price of 1.25 in
/// department 3, all flags set. Gives its id; absent where no slot is free.
std::optional<std::int32_t> addProduct(const std::string& name);
/// Drops what a failure has left open, as the end of the program would.
void forgetSession();

}  // namespace sharedtest
