#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/jet/engine/ColumnValue.h"
#include "platform/jet/engine/Row.h"
#include "platform/jet/format/PropertyBlob.h"

namespace jet {

/// A restriction on a table or on one of its columns: the property `ValidationRule` in the table's
/// property blob, with the message of a refusal in `ValidationText`.
struct ValidationRule {
  std::u16string table;
  std::u16string column;      ///< the column that it restricts; empty where it restricts the rows
  std::u16string expression;  ///< a criterion for a column, a full expression for a table
  std::u16string text;        ///< the message of a refusal; may be empty

  /// The subject of the rule: "table.column", or the table's name.
  std::u16string subject() const;
};

/// The row as it will be after an update.
class NewRow {
 public:
  /// `values` are the columns to set; the others are read from `before`.
  NewRow(const TableSource& source, const Row& before, std::span<const ColumnValue> values)
      : source_(source), before_(before), values_(values) {}

  /// The value of the column of that name, ignoring letter case; absent when the table has none.
  std::optional<runtime::Variant> value(std::u16string_view columnName) const;

 private:
  const TableSource& source_;
  const Row& before_;
  std::span<const ColumnValue> values_;
};

/// Tests a rule on a row: false only where the rule is False, true also where it is null. Raises
/// the engine's error for a rule that can't be parsed.
using RuleTest = std::function<bool(const ValidationRule&, const NewRow&)>;

/// Tests the rules of the columns to be set, and that of the table. Raises the engine's error, with
/// the rule's message where there is one, for the rule that the row breaks.
void checkRules(const TableSource& source, std::span<const PropertyBlock> properties,
                const Row& before, std::span<const ColumnValue> values, const RuleTest& holds);

}  // namespace jet
