#pragma once

#include <cstdint>
#include <string_view>

#include "platform/jet/format/Numbers.h"

namespace jet {

/// Columns of MSysObjects.
struct ObjectColumn {
  static constexpr std::u16string_view kId = u"Id";
  static constexpr std::u16string_view kParent = u"ParentId";
  static constexpr std::u16string_view kName = u"Name";
  static constexpr std::u16string_view kType = u"Type";
  static constexpr std::u16string_view kFlags = u"Flags";
  static constexpr std::u16string_view kProperties = u"LvProp";  ///< see PropertyBlob.h
};

/// A table's id is the page of its definition, in the lower 24 bits.
inline constexpr ObjectId tableIdOf(PageNumber definitionPage) {
  return ObjectId(definitionPage.value());
}
inline constexpr PageNumber definitionPageOf(ObjectId table) {
  return PageNumber(static_cast<std::uint32_t>(table.value()) & kLastPage.value());
}

/// Containers, by which objects are listed: the one of the containers themselves, then those of
/// tables and saved queries, of databases and of relationships.
inline constexpr ObjectId kRootContainer{0x0F000000};
inline constexpr ObjectId kTablesContainer{0x0F000001};
inline constexpr ObjectId kDatabasesContainer{0x0F000002};
inline constexpr ObjectId kRelationshipsContainer{0x0F000003};
/// The database itself, in the container of databases.
inline constexpr ObjectId kDatabaseObject{0x10000000};

enum class ObjectType : std::int16_t {
  Table = 1,
  Database = 2,
  Container = 3,
  DatabaseLink = 4,  ///< a linked table of another kind of database
  Query = 5,
  FileLink = 6,  ///< a linked table of another file of this kind
};

/// Bits of an object's flags.
struct ObjectFlag {
  static constexpr std::uint32_t kSystem = 0x80000000;
  static constexpr std::uint32_t kEngine = 0x02;
  static constexpr std::uint32_t kHidden = 0x08;
  static constexpr std::uint32_t kUnionQuery = 0x80;  ///< a union; its query rows say so too
};

}  // namespace jet
