#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "makestore/StoreTable.h"
#include "makestore/StoredQuery.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Layout.h"

namespace makestore {

/// Builds a new store database: a file with the engine's own tables and with the tables and saved
/// queries that are added here.
class StoreBuilder {
 public:
  /// The generation of the file; Jet 4 by default.
  StoreBuilder& version(jet::Version version);
  /// At most 20 characters; the empty text for none.
  StoreBuilder& password(std::u16string password);
  /// Encrypts every page but the first with this key; 0 for none.
  StoreBuilder& encodingKey(std::uint32_t key);
  /// Makes all usage maps lists of bitmap pages, as in large files.
  StoreBuilder& referenceMaps(bool on = true);
  /// Adds `count` pages at the end of the file that belong to nothing and are marked free.
  StoreBuilder& freePages(std::size_t count);

  /// Adds a table; the reference stays valid. The file has the tables in the order of these calls.
  StoreTable& table(std::u16string_view name);
  /// A table added before. Raises std::invalid_argument where there is none.
  StoreTable& tableNamed(std::u16string_view name);
  StoreBuilder& query(StoredQuery query);

  /// The bytes of the file. Raises std::invalid_argument for tables whose rows break their own
  /// rules (see writeTable).
  jet::Bytes build();
  /// Builds the file and writes it; an existing file is replaced. Also raises a files::FileError
  /// where it can't be written.
  void write(const std::filesystem::path& path);

 private:
  jet::Version version_ = jet::Version::Jet4;
  std::u16string password_;
  std::uint32_t encodingKey_ = 0;
  bool referenceMaps_ = false;
  std::size_t freePages_ = 0;
  std::deque<StoreTable> tables_;
  std::vector<StoredQuery> queries_;
};

}  // namespace makestore
