#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace makestore {

/// A product of the fixed catalogue, from which all products of generated shops are made.
struct CatalogueProduct {
  enum class Kind : std::uint8_t {
    Loose,
    Packaged,     ///< carries a barcode
    Instruction,  ///< no product, but an instruction to the kitchen
  };

  std::u16string_view name;
  std::int32_t cents = 0;
  Kind kind = Kind::Loose;
};

inline constexpr std::size_t kCatalogueDepartments = 10;
inline constexpr std::size_t kProductsPerDepartment = 20;
inline constexpr std::size_t kCatalogueProducts = kCatalogueDepartments * kProductsPerDepartment;

/// Name of the shop's department number `number`, counted from 0.
std::u16string_view catalogueDepartment(std::size_t number);
/// The department's products.
const std::array<CatalogueProduct, kProductsPerDepartment>& catalogueProducts(
    std::size_t department);

}  // namespace makestore
