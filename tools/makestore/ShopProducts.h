#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace makestore {

/// A product of the fixed catalogue (ShopCatalogue.cpp), from which all products of generated shops
/// are made.
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

/// A product of a generated shop.
struct ShopProduct {
  std::u16string name;
  std::size_t department = 0;
  std::int32_t cents = 0;
  CatalogueProduct::Kind kind = CatalogueProduct::Kind::Loose;
};
ShopProduct shopProduct(std::size_t number, std::size_t longestName);

}  // namespace makestore
