#pragma once

#include <filesystem>

#include "makestore/ShopStore.h"

namespace bench {

inline constexpr int kLevels = 3;
inline constexpr int kKeys = 63;
/// Key k of level n (from 1) has the product id 100 n + k, the caption "Product <id>", and a colour
/// of its own.
inline constexpr int kProductsPerLevel = 100;

/// The store's file in the program folder.
inline constexpr const char* kStore = "Stores/Demo/MASTER.mdb";

/// Creates a program folder with the store "Demo" and a layout for each level.
void createShop(const std::filesystem::path& folder, const makestore::ShopOptions& options);

/// Writes the settings below the user's configuration folder, which name the store.
void writeSettings(const std::filesystem::path& configuration);

}  // namespace bench
