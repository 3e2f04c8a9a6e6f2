#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/jet/format/ColumnType.h"
#include "platform/jetsql/IndexPlan.h"
#include "platform/runtime/Variant.h"

namespace jetsql {

/// A value that a restriction compares with, as SQLite gives it: a whole or floating number, or the
/// bytes of a text's key or a GUID.
struct SoughtValue {
  enum class Kind : std::uint8_t { Null, Whole, Number, Bytes } kind = Kind::Null;
  std::int64_t whole = 0;
  double number = 0;
  std::string_view bytes;

  double asNumber() const { return kind == Kind::Whole ? static_cast<double>(whole) : number; }
};

/// The value as the column's type has it; absent where no value of the column equals it.
std::optional<runtime::Variant> equalValue(jet::ColumnType type, const SoughtValue& sought);

/// A bound as an index of the column's type takes it. The bound may let through a little too much,
/// never too little; absent where it lets everything through.
std::optional<runtime::Variant> boundValue(jet::ColumnType type, Restriction::Test test,
                                           const SoughtValue& sought);

/// Appends bytes that are the same for equal values, of a column of the type or sought in it.
void appendIdentity(double number, std::string& identity);
void appendIdentity(std::string_view bytes, std::string& identity);

}  // namespace jetsql
