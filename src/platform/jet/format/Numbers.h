#pragma once

#include <cassert>
#include <compare>
#include <concepts>
#include <cstdint>
#include <utility>

namespace jet {

/// A number of one kind of thing. Conversions from and to integers are explicit, and it compares
/// with its own kind only: swapped arguments do not compile.
template <class Tag, class Integer>
class Number {
 public:
  constexpr Number() = default;
  /// `value` must be in the range of the kind's integers.
  constexpr explicit Number(std::integral auto value) : value_(static_cast<Integer>(value)) {
    assert(std::in_range<Integer>(value));
  }

  constexpr Integer value() const { return value_; }
  constexpr auto operator<=>(const Number&) const = default;

 private:
  Integer value_ = 0;
};

/// A page of the file, counted from 0.
using PageNumber = Number<struct PageTag, std::uint32_t>;
/// What links and pointers hold where there is no page.
inline constexpr PageNumber kNoPage{};
/// The last page that a row pointer can name: it has 24 bits for it.
inline constexpr PageNumber kLastPage{0xFFFFFF};
/// A slot of a data page, counted from 0. Row pointers can name the first `kMostSlots`.
using SlotNumber = Number<struct SlotTag, std::uint16_t>;
/// A column's number in the definition of its table, and its bit in the rows' null masks. Deleted
/// columns leave gaps, so it is no index into the remaining columns.
using ColumnNumber = Number<struct ColumnNumberTag, std::uint16_t>;
/// The index of a column among a table's remaining columns, in the order of their numbers.
using ColumnIndex = Number<struct ColumnIndexTag, std::uint16_t>;
/// A slot for a column's value in a row's variable part, counted from 0.
using VariableSlot = Number<struct VariableSlotTag, std::uint16_t>;
/// An index that the file keeps for a table, by its position in the table's definition.
using IndexNumber = Number<struct IndexTag, std::uint32_t>;
/// A logical index of a table, by the number that its entry in the definition has.
using LogicalIndexNumber = Number<struct LogicalIndexTag, std::uint32_t>;
/// An object in the file's object list: a table, a saved query, a container or another.
using ObjectId = Number<struct ObjectTag, std::int32_t>;

}  // namespace jet
