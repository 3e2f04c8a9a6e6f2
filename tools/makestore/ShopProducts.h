#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace makestore {

/// A product of the demo shop.
struct CatalogueProduct {
  enum class Kind : std::uint8_t {
    Loose,
    Packaged,     ///< carries a barcode
    Instruction,  ///< no product, but a word to the kitchen
  };

  std::u16string_view name;
  std::int32_t cents = 0;
  Kind kind = Kind::Loose;
};

inline constexpr std::size_t kCatalogueDepartments = 10;
inline constexpr std::size_t kProductsPerDepartment = 20;
inline constexpr std::size_t kCatalogueProducts = kCatalogueDepartments * kProductsPerDepartment;

/// Name of the shop's department, from 0.
std::u16string_view catalogueDepartment(std::size_t number);
/// The department's products.
const std::array<CatalogueProduct, kProductsPerDepartment>& catalogueProducts(
    std::size_t department);

/// The shop's product of that number, from 0; from kCatalogueProducts on they are varieties of the
/// first ones, each with a name of its own, of at most `longestName` characters.
struct ShopProduct {
  std::u16string name;
  std::size_t department = 0;
  std::int32_t cents = 0;
  CatalogueProduct::Kind kind = CatalogueProduct::Kind::Loose;
};
ShopProduct shopProduct(std::size_t number, std::size_t longestName);

}  // namespace makestore
