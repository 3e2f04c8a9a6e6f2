#pragma once

#include <filesystem>
#include <span>
#include <string_view>

namespace bench {

/// A session as the screens have it: opens the store, runs the statement, reads all columns of all
/// rows as text, and closes it. Gives the number of rows.
int readStore(const std::filesystem::path& path, std::u16string_view statement);

/// The same with fields that are found by name in each row, as the screens find them.
int readStoreFields(const std::filesystem::path& path, std::u16string_view statement,
                    std::span<const char16_t* const> names);

/// Adds a product as the screens do: the first free slot takes the name, then the flags of its row
/// in tblPlu are set.
void addProduct(const std::filesystem::path& path, std::u16string_view name);

/// Reads a product's flags; updates them with the values that they have.
void readFlags(const std::filesystem::path& path, int id);
void repeatFlags(const std::filesystem::path& path, int id);

}  // namespace bench
