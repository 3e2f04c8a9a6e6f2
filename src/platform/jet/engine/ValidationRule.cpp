#include "platform/jet/engine/ValidationRule.h"

#include <algorithm>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
namespace {

/// True for the object's own properties, and for those of a column that is to be set.
bool applies(const PropertyBlock& block, const TableSource& source,
             std::span<const ColumnValue> values) {
  if (block.type == PropertyBlock::kObject) return true;
  return block.type == PropertyBlock::kColumn &&
         std::ranges::any_of(values, [&](const ColumnValue& each) {
           return sameName(block.name, source.column(each.column).name);
         });
}

[[noreturn]] void raiseBroken(const ValidationRule& rule) {
  if (!rule.text.empty()) throw runtime::generalError(rule.text);
  throw error::ruleBroken(rule.expression, rule.subject());
}

}  // namespace

std::u16string ValidationRule::subject() const {
  return column.empty() ? table : table + u"." + column;
}

std::optional<runtime::Variant> NewRow::value(std::u16string_view columnName) const {
  const auto found = std::ranges::find_if(
      source_.definition.columns,
      [&](const ColumnDefinition& column) { return sameName(column.name, columnName); });
  if (found == source_.definition.columns.end()) return std::nullopt;
  const ColumnIndex column(found - source_.definition.columns.begin());
  const auto given = std::ranges::find(values_, column, &ColumnValue::column);
  return given != values_.end() ? given->value : before_.value(column);
}

void checkRules(const TableSource& source, std::span<const PropertyBlock> properties,
                const Row& before, std::span<const ColumnValue> values, const RuleTest& holds) {
  const NewRow row(source, before, values);
  for (const PropertyBlock& block : properties) {
    if (!applies(block, source, values)) continue;
    const ValidationRule rule{
        .table = source.name,
        .column = block.type == PropertyBlock::kColumn ? block.name : std::u16string(),
        .expression = block.text(source.version(), PropertyName::kRule),
        .text = block.text(source.version(), PropertyName::kRuleText)};
    const bool isSet = rule.expression.find_first_not_of(u' ') != std::u16string::npos;
    if (isSet && !holds(rule, row)) raiseBroken(rule);
  }
}

}  // namespace jet
