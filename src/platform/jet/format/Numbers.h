#pragma once

#include <compare>
#include <cstdint>

namespace jet {

/// A number of one kind of thing. It converts to a plain integer, but only an explicit conversion
/// makes it from an integer or a number of another kind: swapped arguments do not compile.
template <class Kind, class Integer>
class Number {
 public:
  constexpr Number() = default;
  constexpr explicit Number(Integer value) : value_(value) {}
  constexpr operator Integer() const { return value_; }

  constexpr auto operator<=>(const Number&) const = default;

 private:
  Integer value_ = 0;
};

/// A page of the file, counted from 0. In links and pointers 0 stands for none.
using PageNumber = Number<struct PageKind, std::uint32_t>;
/// A slot of a data page, counted from 0.
using SlotNumber = Number<struct SlotKind, std::uint8_t>;
/// A column of a table as its definition numbers it, and its bit in the rows' null mask. Deleted
/// columns leave gaps, so it is no index into the remaining columns.
using ColumnNumber = Number<struct ColumnKind, std::uint16_t>;
/// An index that the file keeps for a table, by its position in the table's definition.
using IndexNumber = Number<struct IndexKind, std::uint32_t>;

}  // namespace jet
