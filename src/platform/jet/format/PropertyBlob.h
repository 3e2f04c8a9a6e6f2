#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// Names of the properties that an update of a row checks.
struct PropertyName {
  static constexpr std::u16string_view kRequired = u"Required";  ///< yes/no, of a column
  static constexpr std::u16string_view kAllowZeroLength = u"AllowZeroLength";  ///< likewise
  static constexpr std::u16string_view kRule = u"ValidationRule";      ///< of a column or the table
  static constexpr std::u16string_view kRuleText = u"ValidationText";  ///< error text of the rule
};

/// One stored property.
struct Property {
  std::u16string name;
  std::uint8_t type = 0;    ///< a column type's number
  bool definition = false;  ///< part of the data definition, as Required is
  Bytes data;
};

/// The properties of an object or of one of its columns.
struct PropertyBlock {
  static constexpr std::uint16_t kObject = 0;
  static constexpr std::uint16_t kColumn = 1;

  std::uint16_t type = kColumn;
  std::u16string name;  ///< of the column
  std::vector<Property> properties;

  /// A yes/no property by its name, ignoring letter case; false where it is absent.
  bool flag(std::u16string_view name) const;
  /// A text property by its name, ignoring letter case; empty where it is absent.
  std::u16string text(Version version, std::u16string_view name) const;

 private:
  const Property* find(std::u16string_view name) const;
};

/// Reads an object's property blob (column LvProp of the object list); an empty one has no blocks.
/// Raises damage where the bytes are no such blob.
std::vector<PropertyBlock> decodeProperties(Version version, ByteView blob,
                                            const Location& location);
Bytes encodeProperties(Version version, const std::vector<PropertyBlock>& blocks);

}  // namespace jet
