#pragma once

#include <filesystem>

#include "makestore/ShopStore.h"

namespace bench {

inline constexpr int kLevels = 3;
inline constexpr int kKeys = 63;
/// Key k of level n bears the product 100 n + k, "Product 100" and so on, in a colour of its own.
inline constexpr int kProductsALevel = 100;

/// A program folder with the store "Demo" and a layout of each level.
void layOutShop(const std::filesystem::path& folder, const makestore::ShopOrder& order);

/// The settings below the user's configuration folder: which store it is.
void writeSettings(const std::filesystem::path& configuration);

}  // namespace bench
