#pragma once

#include <cstdint>
#include <string_view>

namespace jet {

/// Columns of MSysObjects.
struct ObjectColumn {
  static constexpr std::u16string_view kId = u"Id";  ///< of a table: the page of its definition
  static constexpr std::u16string_view kParent = u"ParentId";
  static constexpr std::u16string_view kName = u"Name";
  static constexpr std::u16string_view kType = u"Type";
  static constexpr std::u16string_view kFlags = u"Flags";
  static constexpr std::u16string_view kProperties = u"LvProp";  ///< see PropertyBlob.h
};

/// The container in which tables and saved queries live.
inline constexpr std::int32_t kTablesContainer = 0x0F000001;

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
};

}  // namespace jet
