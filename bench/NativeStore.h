#pragma once

#include <filesystem>
#include <string>

#include "makestore/StoreBuilder.h"

namespace bench {

/// Writes the store's tables, rows, indexes and saved query qrySalesitems (of the ordinary shop)
/// as a native SQLite file: the peer that our own reading is measured beside.
void writeNative(const std::filesystem::path& path, makestore::StoreBuilder& store);

/// Opens the native file, runs the statement, reads all columns of all rows as text, and closes it.
/// Gives the number of rows.
int readNative(const std::filesystem::path& path, const std::string& statement);

}  // namespace bench
