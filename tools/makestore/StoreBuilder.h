#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "makestore/StoredQuery.h"
#include "makestore/Table.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Layout.h"

namespace makestore {

/// A store database to be made from nothing: a file with the engine's own tables, the tables
/// and the saved queries that are asked for.
class StoreBuilder {
 public:
  /// The generation of the file; Jet 4 where nothing is said.
  StoreBuilder& version(jet::Version version);
  /// At most 20 characters; the empty text for none.
  StoreBuilder& password(std::u16string password);
  /// Has every page but the first enciphered under this key; 0 for none.
  StoreBuilder& encodingKey(std::uint32_t key);
  /// Keeps all usage maps as page numbers of bitmap pages, as large files have them.
  StoreBuilder& referenceMaps(bool on = true);
  /// Leaves so many pages at the end of the file that belong to nothing and are marked free.
  StoreBuilder& freePages(std::size_t count);

  /// Adds a table; the reference stays good. Tables lie in the file as added.
  Table& table(std::u16string_view name);
  /// A table added before. Raises std::invalid_argument where there is none.
  Table& tableNamed(std::u16string_view name);
  StoreBuilder& query(StoredQuery query);

  /// The whole file. Raises std::invalid_argument for tables whose rows break their own rules (see
  /// writeTable).
  jet::Bytes build();
  /// Builds the file and writes it, over one that is there. Raises also what the file raises
  /// (files::FileError).
  void write(const std::filesystem::path& path);

 private:
  jet::Version version_ = jet::Version::Jet4;
  std::u16string password_;
  std::uint32_t encodingKey_ = 0;
  bool referenceMaps_ = false;
  std::size_t freePages_ = 0;
  std::deque<Table> tables_;
  std::vector<StoredQuery> queries_;
};

}  // namespace makestore
