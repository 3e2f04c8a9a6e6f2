#pragma once

#include <filesystem>
#include <span>
#include <string_view>

namespace bench {

/// A session like those of the screens: opens the store, runs the statement, reads all columns of
/// all rows as text, and closes it. Returns the number of rows.
int readStore(const std::filesystem::path& path, std::u16string_view statement);

/// The same, but finds the fields by name in each row, as the screens do.
int readStoreFields(const std::filesystem::path& path, std::u16string_view statement,
                    std::span<const char16_t* const> names);

/// Adds a product as the screens do: writes the name into the first free slot, then sets the flags
/// of its row in tblPlu.
void addProduct(const std::filesystem::path& path, std::u16string_view name);

/// Reads a product's flags.
void readFlags(const std::filesystem::path& path, int id);
/// Reads a product's flags and updates them with the same values.
void rewriteFlags(const std::filesystem::path& path, int id);

}  // namespace bench
