#pragma once

#include <cstdint>
#include <string_view>

#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace support {

/// Types name and price into the sheet for a new product. Afterwards the department's cell is
/// active.
void typeProduct(WindowDriver& sheet, std::u16string_view name, std::u16string_view price);

/// The outcome of a product that was typed into the sheet and saved.
struct Added {
  std::int32_t error = 0;  ///< the number of the failure that ended the program
  std::int32_t id = 0;     ///< the slot that was filled, 0 where none was free
};

/// Opens the sheet, types a product with a price of 1.25, no department and all flags, and saves
/// it, in a run of the program of its own.
Added addProduct(TestHost& host, std::u16string_view name);

}  // namespace support
