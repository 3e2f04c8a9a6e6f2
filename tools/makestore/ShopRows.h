#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "makestore/ShopStore.h"
#include "platform/runtime/Variant.h"

namespace makestore {

/// One product slot: its values in all the shop's tables.
struct SlotRow {
  std::int32_t id = 0;
  std::int32_t recordNumber = 0;
  std::optional<std::u16string> name = {};
  std::optional<std::u16string> department = {};
  std::int64_t price = 0;  ///< in ten-thousandths
  std::optional<std::u16string> barcode = {};
  bool instruction = false;
  bool taxable = false;
  std::int16_t onHand = 0;
  runtime::Variant lastSold = {};
  runtime::Guid guid = {};
  std::optional<std::u16string> notes = {};
};

/// The departments in the options, or those of the demo shop.
std::vector<ShopDepartment> departmentsOf(const ShopOptions& options);
/// All slots of the shop, in the order of their rows in the file.
std::vector<SlotRow> slotsOf(const ShopOptions& options);

/// Makes the entries of an index on the names fill one leaf exactly: frees the last named slots
/// while they are too large, then lengthens the last names by one character each while room is
/// left. Raises std::invalid_argument where there are too few slots.
void fillNameLeaf(std::vector<SlotRow>& slots, std::size_t longestName);

}  // namespace makestore
