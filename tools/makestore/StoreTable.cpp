#include "makestore/StoreTable.h"

#include <algorithm>
#include <stdexcept>

#include "platform/jet/format/PropertyBlob.h"
#include "platform/jet/format/StoredText.h"
#include "platform/runtime/CodePage.h"

namespace makestore {
namespace {

jet::Property yes(std::u16string_view name) {
  return {.name = std::u16string(name),
          .type = static_cast<std::uint8_t>(jet::ColumnType::Boolean),
          .definition = true,
          .data = {0xFF}};
}

jet::Property textProperty(jet::Version version, std::u16string_view name,
                           std::u16string_view value) {
  return {.name = std::u16string(name),
          .type = static_cast<std::uint8_t>(jet::ColumnType::Memo),
          .definition = true,
          .data = jet::encodeText(version, value, false).value()};
}

void addRule(jet::Version version, const Rule& rule, jet::PropertyBlock& block) {
  if (rule.expression.empty()) return;
  block.properties.push_back(textProperty(version, jet::PropertyName::kRule, rule.expression));
  if (!rule.text.empty())
    block.properties.push_back(textProperty(version, jet::PropertyName::kRuleText, rule.text));
}

}  // namespace

Column Column::text(std::u16string name, std::size_t length) {
  return {.name = std::move(name), .type = jet::ColumnType::Text, .length = length};
}

Index Index::primaryKey(std::u16string column) {
  return {.name = u"PrimaryKey",
          .columns = {{std::move(column)}},
          .primary = true,
          .unique = true,
          .required = true};
}

Index Index::plain(std::u16string column) {
  return {.name = column, .columns = {{column}}};
}

StoreTable::StoreTable(std::u16string_view name) : name_(name) {}

StoreTable& StoreTable::column(Column column) {
  columns_.push_back(std::move(column));
  return *this;
}

StoreTable& StoreTable::index(Index index) {
  indexes_.push_back(std::move(index));
  return *this;
}

StoreTable& StoreTable::rule(Rule rule) {
  rule_ = std::move(rule);
  return *this;
}

StoreTable& StoreTable::row(std::vector<runtime::Variant> values, Placement placement) {
  if (values.size() > columns_.size())
    throw std::invalid_argument("a row has more values than its table has columns");
  values.resize(columns_.size());
  rows_.push_back({std::move(values), placement});
  return *this;
}

StoreTable& StoreTable::fillPagesThrough(std::u16string column) {
  fillColumn_ = std::move(column);
  return *this;
}

std::size_t StoreTable::columnIndex(std::u16string_view name) const {
  const auto found = std::ranges::find(columns_, name, &Column::name);
  if (found == columns_.end())
    throw std::invalid_argument(runtime::toUtf8(name_) + " has no column " + runtime::toUtf8(name));
  return static_cast<std::size_t>(found - columns_.begin());
}

jet::Bytes StoreTable::properties(jet::Version version) const {
  std::vector<jet::PropertyBlock> blocks;
  jet::PropertyBlock own{.type = jet::PropertyBlock::kObject, .name = {}, .properties = {}};
  addRule(version, rule_, own);
  if (!own.properties.empty()) blocks.push_back(std::move(own));
  for (const Column& column : columns_) {
    jet::PropertyBlock block{.name = column.name, .properties = {}};
    if (column.required) block.properties.push_back(yes(jet::PropertyName::kRequired));
    if (jet::isText(column.type) && column.allowZeroLength)
      block.properties.push_back(yes(jet::PropertyName::kAllowZeroLength));
    addRule(version, column.rule, block);
    if (!block.properties.empty()) blocks.push_back(std::move(block));
  }
  return blocks.empty() ? jet::Bytes() : jet::encodeProperties(version, blocks);
}

}  // namespace makestore
