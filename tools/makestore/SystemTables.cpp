#include "makestore/SystemTables.h"

#include <array>
#include <bit>
#include <cstddef>
#include <map>
#include <utility>

#include "platform/jet/format/Layout.h"

namespace makestore {
namespace {

using jet::ColumnType;
using jet::ObjectType;
using runtime::Variant;

constexpr std::uint8_t kSystemColumn = jet::ColumnFlag::kUpdatable | jet::ColumnFlag::kSystem;
constexpr std::uint8_t kIdentityColumn = kSystemColumn | jet::ColumnFlag::kIdentity;
constexpr std::size_t kLongest = 255;

constexpr auto kSystemObject = std::bit_cast<std::int32_t>(jet::ObjectFlag::kSystem);

/// Id of one of the engine's built-in users or groups; the only ones in a file without user
/// accounts.
using Identity = std::array<std::uint8_t, 2>;
constexpr Identity kEngine{0x65, 0x89};
constexpr Identity kAdmins{0x64, 0x8B};
constexpr Identity kUsers{0x65, 0x8B};
constexpr Identity kOwner{0x65, 0x8E};

/// Bits of an access mask.
struct Right {
  static constexpr std::int32_t kReadPermissions = 0x20000;
  static constexpr std::int32_t kSetPermissions = 0x40000;
  static constexpr std::int32_t kSetOwner = 0x80000;
  // Of a table.
  static constexpr std::int32_t kReadDesign = 0x04;
  static constexpr std::int32_t kReadRows = 0x10;
  // Of a container.
  static constexpr std::int32_t kCreate = 0x01;
  // Of the database.
  static constexpr std::int32_t kOpen = 0x02;
  static constexpr std::int32_t kOpenExclusively = 0x04;
  static constexpr std::int32_t kAdminister = 0x08;
  // Sums of bits.
  static constexpr std::int32_t kReadTable = kReadDesign | kReadRows;
  static constexpr std::int32_t kUseDatabase = kOpen | kOpenExclusively | kAdminister;
  static constexpr std::int32_t kPermissions = kReadPermissions | kSetPermissions;
  static constexpr std::int32_t kAll = 0xFFFFF;
  static constexpr std::int32_t kAllOfOwner = 0xF00FE;  ///< on objects of a container
  static constexpr std::int32_t kAllOfUsers = 0xFFEFF;  ///< on tables and queries
};

struct Permission {
  jet::ObjectId object;
  Identity identity{};
  std::int32_t mask = 0;
  bool inheritable = false;
};

constexpr std::array kFixedPermissions{
    Permission{jet::tableIdOf(jet::kObjectsPage), kAdmins, Right::kPermissions, false},
    Permission{jet::tableIdOf(jet::kObjectsPage), kUsers, Right::kReadTable, false},
    Permission{jet::tableIdOf(jet::kAcesPage), kAdmins, Right::kPermissions, false},
    Permission{jet::tableIdOf(jet::kQueriesPage), kAdmins, Right::kPermissions, false},
    Permission{jet::tableIdOf(jet::kQueriesPage), kUsers, Right::kReadTable, false},
    Permission{jet::tableIdOf(jet::kRelationshipsPage), kAdmins,
               Right::kPermissions | Right::kSetOwner, false},
    Permission{jet::tableIdOf(jet::kRelationshipsPage), kUsers, Right::kReadTable, false},
    Permission{jet::kTablesContainer, kOwner, Right::kAllOfOwner, true},
    Permission{jet::kTablesContainer, kAdmins, Right::kPermissions | Right::kCreate, false},
    Permission{jet::kTablesContainer, kUsers, Right::kAllOfUsers, true},
    Permission{jet::kRelationshipsContainer, kOwner, Right::kAllOfOwner, true},
    Permission{jet::kRelationshipsContainer, kAdmins, Right::kPermissions | Right::kCreate, false},
    Permission{jet::kRelationshipsContainer, kUsers, Right::kAll, true},
    Permission{jet::kDatabasesContainer, kAdmins, Right::kPermissions, false},
    Permission{jet::kDatabaseObject, kAdmins, Right::kPermissions | Right::kUseDatabase, false},
    Permission{jet::kDatabaseObject, kUsers, Right::kUseDatabase, false},
};

/// Jet 3 stores the ids above XOR this mask.
constexpr Identity kIdentityMask{0x67, 0x8A};

runtime::Binary binary(jet::Version version, const Identity& identity) {
  runtime::Binary bytes(identity.begin(), identity.end());
  for (std::size_t i = 0; version == jet::Version::Jet3 && i < bytes.size(); ++i)
    bytes[i] ^= kIdentityMask[i];
  return bytes;
}

std::u16string text(std::u16string_view name) {
  return std::u16string(name);
}

Column systemColumn(std::u16string name, ColumnType type) {
  return {.name = std::move(name), .type = type, .compressed = false, .flags = kSystemColumn};
}

Column systemText(std::u16string name) {
  Column column = systemColumn(std::move(name), ColumnType::Text);
  column.length = kLongest;
  return column;
}

Column systemBinary(jet::Version version, std::u16string name, std::uint8_t flags = kSystemColumn) {
  Column column = systemColumn(std::move(name), ColumnType::Binary);
  column.length = version == jet::Version::Jet3 ? kLongest : 2 * kLongest;
  column.flags = flags;
  return column;
}

template <class T>
Variant orNull(const std::optional<T>& value) {
  return value ? Variant(*value) : Variant();
}

runtime::Binary bigEndian(std::uint32_t number) {
  return {static_cast<std::uint8_t>(number >> 24), static_cast<std::uint8_t>(number >> 16),
          static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)};
}

}  // namespace

StoreTable objectList(jet::Version version, const std::vector<ListedObject>& objects, double date) {
  StoreTable table(u"MSysObjects");
  table.column(systemColumn(text(jet::ObjectColumn::kId), ColumnType::Long))
      .column(systemColumn(text(jet::ObjectColumn::kParent), ColumnType::Long))
      .column(systemText(text(jet::ObjectColumn::kName)))
      .column(systemColumn(text(jet::ObjectColumn::kType), ColumnType::Integer))
      .column(systemColumn(u"DateCreate", ColumnType::DateTime))
      .column(systemColumn(u"DateUpdate", ColumnType::DateTime))
      .column(systemBinary(version, u"Owner", kIdentityColumn))
      .column(systemColumn(text(jet::ObjectColumn::kFlags), ColumnType::Long))
      .column(systemColumn(u"Database", ColumnType::Memo))
      .column(systemColumn(u"Connect", ColumnType::Memo))
      .column(systemText(u"ForeignName"))
      .column(systemBinary(version, u"RmtInfoShort"))
      .column(systemColumn(u"RmtInfoLong", ColumnType::Ole))
      .column(systemColumn(u"Lv", ColumnType::Ole))
      .column(systemColumn(text(jet::ObjectColumn::kProperties), ColumnType::Ole))
      .column(systemColumn(u"LvModule", ColumnType::Ole))
      .column(systemColumn(u"LvExtra", ColumnType::Ole))
      .index({.name = u"ParentIdName",
              .columns = {{text(jet::ObjectColumn::kParent)}, {text(jet::ObjectColumn::kName)}},
              .unique = true})
      .index({.name = text(jet::ObjectColumn::kId),
              .columns = {{text(jet::ObjectColumn::kId)}},
              .primary = true,
              .unique = true});
  const auto add = [&](jet::ObjectId id, jet::ObjectId parent, ObjectType type,
                       const std::u16string& name, const Identity& owner, std::int32_t flags,
                       const jet::Bytes& properties) {
    std::vector<Variant> row{id.value(),
                             parent.value(),
                             name,
                             static_cast<std::int16_t>(type),
                             runtime::Date{date},
                             runtime::Date{date},
                             binary(version, owner),
                             flags};
    if (!properties.empty()) {
      row.resize(table.columnIndex(text(jet::ObjectColumn::kProperties)));
      row.emplace_back(properties);
    }
    table.row(std::move(row));
  };
  const auto addOwn = [&](jet::ObjectId id, jet::ObjectId parent, ObjectType type,
                          const std::u16string& name, const Identity& owner = kEngine) {
    add(id, parent, type, name, owner, kSystemObject, {});
  };
  addOwn(jet::kTablesContainer, jet::kRootContainer, ObjectType::Container, u"Tables");
  addOwn(jet::kDatabasesContainer, jet::kRootContainer, ObjectType::Container, u"Databases");
  addOwn(jet::kRelationshipsContainer, jet::kRootContainer, ObjectType::Container,
         u"Relationships");
  addOwn(jet::kDatabaseObject, jet::kDatabasesContainer, ObjectType::Database, u"MSysDb", kAdmins);
  addOwn(jet::tableIdOf(jet::kObjectsPage), jet::kTablesContainer, ObjectType::Table,
         u"MSysObjects");
  addOwn(jet::tableIdOf(jet::kAcesPage), jet::kTablesContainer, ObjectType::Table, u"MSysACEs");
  addOwn(jet::tableIdOf(jet::kQueriesPage), jet::kTablesContainer, ObjectType::Table,
         u"MSysQueries");
  addOwn(jet::tableIdOf(jet::kRelationshipsPage), jet::kTablesContainer, ObjectType::Table,
         u"MSysRelationships");
  for (const ListedObject& object : objects)
    add(object.id, jet::kTablesContainer, object.type, object.name, kAdmins, object.flags,
        object.properties);
  return table;
}

StoreTable permissions(jet::Version version, const std::vector<ListedObject>& objects) {
  StoreTable table(u"MSysACEs");
  table.column(systemColumn(u"ObjectId", ColumnType::Long))
      .column(systemBinary(version, u"SID", kIdentityColumn))
      .column(systemColumn(u"ACM", ColumnType::Long))
      .column(systemColumn(u"FInheritable", ColumnType::Boolean))
      .index({.name = u"ObjectId", .columns = {{u"ObjectId"}}, .required = true});
  for (const Permission& each : kFixedPermissions)
    table.row({each.object.value(), binary(version, each.identity), each.mask, each.inheritable});
  for (const ListedObject& object : objects)
    for (const Identity& identity : {kOwner, kUsers})
      table.row({object.id.value(), binary(version, identity), Right::kAll, false});
  return table;
}

StoreTable savedQueries(jet::Version version, const std::vector<StoredQuery>& queries,
                        const std::vector<jet::ObjectId>& ids) {
  StoreTable table(u"MSysQueries");
  table.column(systemColumn(text(jet::QueryColumn::kObject), ColumnType::Long))
      .column(systemColumn(text(jet::QueryColumn::kAttribute), ColumnType::Byte))
      .column(systemBinary(version, text(jet::QueryColumn::kOrder)))
      .column(systemText(text(jet::QueryColumn::kName1)))
      .column(systemText(text(jet::QueryColumn::kName2)))
      .column(systemColumn(text(jet::QueryColumn::kExpression), ColumnType::Memo))
      .column(systemColumn(text(jet::QueryColumn::kFlag), ColumnType::Integer))
      .index({.name = u"ObjectIdAttribute",
              .columns = {{text(jet::QueryColumn::kObject)},
                          {text(jet::QueryColumn::kAttribute)},
                          {text(jet::QueryColumn::kOrder)}},
              .primary = true,
              .unique = true});
  if (version == jet::Version::Jet4)
    table.column(systemColumn(text(jet::QueryColumn::kExtra), ColumnType::Long));
  for (std::size_t i = 0; i < queries.size(); ++i) {
    std::map<jet::QueryAttribute, std::uint32_t> orders;
    for (const QueryRow& row : queries[i].rows) {
      std::vector<Variant> values{ids[i].value(),
                                  static_cast<std::uint8_t>(row.attribute),
                                  bigEndian(++orders[row.attribute]),
                                  orNull(row.name1),
                                  orNull(row.name2),
                                  orNull(row.expression),
                                  orNull(row.flag)};
      if (version == jet::Version::Jet4) values.push_back(orNull(row.extra));
      table.row(std::move(values));
    }
  }
  return table;
}

StoreTable relationships() {
  StoreTable table(u"MSysRelationships");
  table.column(systemText(u"szRelationship"))
      .column(systemColumn(u"grbit", ColumnType::Long))
      .column(systemColumn(u"ccolumn", ColumnType::Long))
      .column(systemColumn(u"icolumn", ColumnType::Long))
      .column(systemText(u"szObject"))
      .column(systemText(u"szColumn"))
      .column(systemText(u"szReferencedObject"))
      .column(systemText(u"szReferencedColumn"));
  for (const char16_t* column : {u"szRelationship", u"szObject", u"szReferencedObject"})
    table.index({.name = column, .columns = {{column}}, .ignoreNulls = true});
  return table;
}

}  // namespace makestore
