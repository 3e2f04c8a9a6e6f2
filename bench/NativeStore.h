#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>

#include "makestore/StoreBuilder.h"

namespace bench {

/// Writes the store's tables, rows, indexes and saved query qrySalesitems (of the ordinary shop)
/// as a native SQLite file: the peer for measuring our own reading.
void writeNative(const std::filesystem::path& path, makestore::StoreBuilder& store);

/// Opens the native file, runs the statement, reads all columns of all rows as text, and closes it.
/// Returns the number of rows.
int readNative(const std::filesystem::path& path, const std::string& statement);

/// Called with the fields of one row as text.
using FieldsOfRow = std::function<void(std::span<const std::u16string>)>;

/// The same, but finds the fields by name in each row, without regard to case, as the screens do:
/// the peer of `readStoreFields`.
int readNativeFields(const std::filesystem::path& path, const std::string& statement,
                     std::span<const char* const> names, const FieldsOfRow& use);

}  // namespace bench
