#include "makestore/StoreBuilder.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "makestore/PageSpace.h"
#include "makestore/SystemTables.h"
#include "makestore/TableWriter.h"
#include "platform/files/ByteFile.h"
#include "platform/jet/format/Header.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/PageCipher.h"
#include "platform/runtime/CodePage.h"

namespace makestore {
namespace {

/// 5 June 2004, half past one: the creation date of every store, so that equal calls produce equal
/// files.
constexpr double kCreationDate = 38143.5625;
/// Object id of the first query; the others follow.
constexpr std::uint32_t kFirstQueryId = 0x80000001;

}  // namespace

StoreBuilder& StoreBuilder::version(jet::Version version) {
  version_ = version;
  return *this;
}

StoreBuilder& StoreBuilder::password(std::u16string password) {
  if (password.size() > jet::Header::kLongestPassword)
    throw std::invalid_argument("a password has at most 20 characters");
  password_ = std::move(password);
  return *this;
}

StoreBuilder& StoreBuilder::encodingKey(std::uint32_t key) {
  encodingKey_ = key;
  return *this;
}

StoreBuilder& StoreBuilder::referenceMaps(bool on) {
  referenceMaps_ = on;
  return *this;
}

StoreBuilder& StoreBuilder::freePages(std::size_t count) {
  freePages_ = count;
  return *this;
}

StoreTable& StoreBuilder::table(std::u16string_view name) {
  return tables_.emplace_back(name);
}

StoreTable& StoreBuilder::tableNamed(std::u16string_view name) {
  const auto found = std::ranges::find(tables_, name, &StoreTable::name);
  if (found == tables_.end())
    throw std::invalid_argument("no table is named " + runtime::toUtf8(name));
  return *found;
}

StoreBuilder& StoreBuilder::query(StoredQuery query) {
  queries_.push_back(std::move(query));
  return *this;
}

jet::Bytes StoreBuilder::build() {
  PageSpace space(version_, referenceMaps_);
  // The definition pages of the four system tables follow the page of the global maps.
  for (jet::PageNumber last; last != jet::kRelationshipsPage;) last = space.allocate();

  std::vector<ListedObject> objects;
  std::vector<jet::PageNumber> definitionPages;
  for (const StoreTable& table : tables_) {
    definitionPages.push_back(space.allocate());
    ListedObject& object = objects.emplace_back();
    object.id = jet::tableIdOf(definitionPages.back());
    object.type = jet::ObjectType::Table;
    object.name = table.name();
    object.properties = table.properties(version_);
  }
  std::vector<jet::ObjectId> queryIds;
  for (const StoredQuery& query : queries_) {
    ListedObject& object = objects.emplace_back();
    object.id = jet::ObjectId(
        std::bit_cast<std::int32_t>(kFirstQueryId + static_cast<std::uint32_t>(queryIds.size())));
    object.type = jet::ObjectType::Query;
    object.name = query.name;
    object.flags = query.objectFlags;
    queryIds.push_back(object.id);
  }

  StoreTable objectTable = objectList(version_, objects, kCreationDate);
  StoreTable permissionTable = permissions(version_, objects);
  StoreTable queryTable = savedQueries(version_, queries_, queryIds);
  StoreTable relationshipTable = relationships();
  writeTable(space, objectTable, jet::kObjectsPage, TableKind::System);
  writeTable(space, permissionTable, jet::kAcesPage, TableKind::System);
  writeTable(space, queryTable, jet::kQueriesPage, TableKind::System);
  writeTable(space, relationshipTable, jet::kRelationshipsPage, TableKind::System);
  for (std::size_t i = 0; i < tables_.size(); ++i)
    writeTable(space, tables_[i], definitionPages[i], TableKind::User);

  for (std::size_t i = 0; i < freePages_; ++i) space.addFreePage();
  space.writeGlobalMap();
  jet::Header header;
  header.version = version_;
  header.password = password_;
  header.encodingKey = encodingKey_;
  header.creationDate = kCreationDate;
  space.put(jet::kHeaderPage, header.encode());

  jet::Bytes file;
  file.reserve(space.pages().size() * space.layout().pageSize);
  for (std::size_t i = 0; i < space.pages().size(); ++i) {
    const jet::PageNumber number(i);
    jet::cipherPage(encodingKey_, number, space.page(number));
    jet::appendBytes(file, space.page(number));
  }
  return file;
}

void StoreBuilder::write(const std::filesystem::path& path) {
  const jet::Bytes bytes = build();
  files::ByteFile file(path, files::ByteFile::Access::Create);
  file.writeAt(0, bytes);
  file.close();
}

}  // namespace makestore
