#include "makestore/ShopProducts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/runtime/Conversion.h"

namespace makestore {
namespace {

constexpr std::array<std::u16string_view, 24> kAdjectives{
    u"Organic", u"Family",   u"Mini",     u"Classic", u"Deluxe",    u"House",
    u"Light",   u"Festive",  u"Summer",   u"Winter",  u"Village",   u"Märkisch",
    u"Nordic",  u"Français", u"Island",   u"Royal",   u"Farmhouse", u"Harbour",
    u"Señor",   u"Golden",   u"Old Mill", u"Vegan",   u"Spicy",     u"Low-salt"};

constexpr std::array<std::u16string_view, 10> kSizes{u"S",   u"M",    u"L",    u"XL",   u"x 2",
                                                     u"x 6", u"x 12", u"250g", u"500g", u"1kg"};

}  // namespace

ShopProduct shopProduct(std::size_t number, std::size_t longestName) {
  const std::size_t department = number % kCatalogueProducts / kProductsPerDepartment;
  const CatalogueProduct& base = catalogueProducts(department)[number % kProductsPerDepartment];
  ShopProduct product{.name = std::u16string(base.name),
                      .department = department,
                      .cents = base.cents,
                      .kind = base.kind};
  if (const std::size_t variety = number / kCatalogueProducts; variety > 0) {
    const std::size_t series = (variety - 1) / kSizes.size();
    std::u16string tail = u" " + std::u16string(kSizes[(variety - 1) % kSizes.size()]);
    if (series >= kAdjectives.size())
      tail += u" " + runtime::toText(series / kAdjectives.size() + 1);
    product.name = std::u16string(kAdjectives[series % kAdjectives.size()]) + u" " + product.name;
    product.name.resize(
        std::min(product.name.size(), longestName - std::min(longestName, tail.size())));
    product.name += tail;
    product.cents += static_cast<std::int32_t>(variety % 50);
  }
  product.name.resize(std::min(product.name.size(), longestName));
  return product;
}

}  // namespace makestore
