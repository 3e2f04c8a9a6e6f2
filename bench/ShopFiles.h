#pragma once

#include <filesystem>

#include "makestore/ShopStore.h"

namespace bench {

inline constexpr int kLevels = 3;
inline constexpr int kKeys = 63;
/// Key k of level n has the product 100 n + k, "Product 100" and so on, in a colour of its own.
inline constexpr int kProductsALevel = 100;

/// The store's file in the program folder.
inline constexpr const char* kStore = "Stores/Demo/MASTER.mdb";

/// Creates a program folder with the store "Demo" and a layout for each level.
void layOutShop(const std::filesystem::path& folder, const makestore::ShopOrder& order);

/// Writes the settings below the user's configuration folder, which name the store.
void writeSettings(const std::filesystem::path& configuration);

}  // namespace bench
