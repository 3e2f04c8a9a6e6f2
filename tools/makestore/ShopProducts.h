#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "makestore/ShopCatalogue.h"

namespace makestore {

/// A product of a generated shop.
struct ShopProduct {
  std::u16string name;
  std::size_t department = 0;
  std::int32_t cents = 0;
  CatalogueProduct::Kind kind = CatalogueProduct::Kind::Loose;
};
/// The product of that number, counted from 0: first those of the catalogue, then varieties of them
/// with an adjective before the name and a size after it. The name is cut to `longestName`
/// characters.
ShopProduct shopProduct(std::size_t number, std::size_t longestName);

}  // namespace makestore
