#include "platform/jetsql/TableReader.h"

#include <algorithm>
#include <bit>

namespace jetsql {
namespace {

using Test = Restriction::Test;

/// A table of the rows pays once this many values have been looked up, or a share of the rows.
constexpr std::uint32_t kFewLookups = 64;
constexpr std::uint32_t kShareOfRows = 64;
/// Without an index each value costs a scan.
constexpr std::uint32_t kScansBefore = 1;

/// A number's bits, so that they compare as bytes in the order of the numbers.
void appendOrdered(double number, std::string& key) {
  auto bits = std::bit_cast<std::uint64_t>(number);
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;
  bits = (bits & kSign) != 0 ? ~bits : bits | kSign;
  for (int shift = 56; shift >= 0; shift -= 8) {
    key += static_cast<char>(static_cast<std::uint8_t>(bits >> static_cast<unsigned>(shift)));
  }
}

/// The number that a numeric column calculates with; absent for null and for other types.
std::optional<double> numberOf(const jet::Row& row, int column, jet::ColumnType type) {
  switch (type) {
    case jet::ColumnType::Boolean:
    case jet::ColumnType::Byte:
    case jet::ColumnType::Integer:
    case jet::ColumnType::Long: {
      std::int32_t whole = 0;
      if (!row.integer(column, whole)) return std::nullopt;
      return whole;
    }
    default:
      break;
  }
  return row.value(column).number();
}

}  // namespace

TableReader::TableReader(const jet::Table& table) : table_(table), single_(table.reader()) {}

void TableReader::setPlan(const IndexPlan& plan) {
  plan_ = plan;
  starts_ = 0;
  lookup_.reset();
  soughtColumns_.clear();
  indexColumns_.clear();
  const auto typeOfColumn = [&](int column) {
    return table_.columns()[static_cast<std::size_t>(column)].type;
  };
  isNumber_ = false;
  testsCursor_ = plan_.index < 0;
  for (const IndexPlan::Taken& each : plan_.taken) {
    if (each.test != Test::Equal) continue;
    const auto type = typeOfColumn(each.column.column);
    soughtColumns_.push_back(each.column);
    isNumber_ = !jet::isText(type) && type != jet::ColumnType::Guid;
    // A text may be one that the index can't tell apart.
    testsCursor_ = testsCursor_ || jet::isText(type);
  }
  isNumber_ = isNumber_ && plan_.taken.size() == 1;
  if (plan_.index < 0) return;
  for (const auto& each : table_.indexes()[static_cast<std::size_t>(plan_.index)].columns) {
    const bool isText = jet::isText(typeOfColumn(each.column));
    indexColumns_.push_back({each.column, isText ? Form::Key : Form::Value, 0});
  }
}

void TableReader::start(const IndexPlan& plan, std::span<const SoughtValue> values) {
  if (starts_ == 0 || !plan_.samePath(plan)) setPlan(plan);
  ++starts_;
  row_ = nullptr;
  lookupPlace_ = 0;
  cursor_.reset();
  group_.clear();
  groupPlace_ = 0;
  isAhead_ = false;
  if (!lookup_ && wantsLookup()) fillLookup();
  if (lookup_) {
    startLookup(values);
  } else if (!setSought(values)) {
    return;
  } else if (plan_.index < 0) {
    cursor_ = table_.scan();
  } else {
    jet::IndexRange range;
    if (!makeRange(values, range)) return;
    cursor_ = table_.walk(plan_.index, range);
  }
  next();
}

/// Notes the identity of the values that rows must have; false where no row can have them.
bool TableReader::setSought(std::span<const SoughtValue> values) {
  sought_.clear();
  for (std::size_t i = 0; i < plan_.taken.size(); ++i) {
    const IndexPlan::Taken& each = plan_.taken[i];
    if (each.test == Test::IsNull) continue;
    if (values[i].kind == SoughtValue::Kind::Null) return false;
    if (each.test != Test::Equal) continue;
    if (values[i].kind == SoughtValue::Kind::Bytes) {
      appendIdentity(values[i].bytes, sought_);
    } else {
      appendIdentity(values[i].asNumber(), sought_);
    }
  }
  return true;
}

void TableReader::startLookup(std::span<const SoughtValue> values) {
  if (!isNumber_) {
    if (setSought(values)) lookupPlace_ = lookup_->first(RowLookup::hashOf(sought_));
  } else if (values[0].kind == SoughtValue::Kind::Whole ||
             values[0].kind == SoughtValue::Kind::Number) {
    lookupPlace_ = lookup_->first(RowLookup::hashOf(values[0].asNumber()));
  }
}

bool TableReader::makeRange(std::span<const SoughtValue> values, jet::IndexRange& range) const {
  for (std::size_t i = 0; i < plan_.taken.size(); ++i) {
    const IndexPlan::Taken& each = plan_.taken[i];
    const auto type = table_.columns()[static_cast<std::size_t>(each.column.column)].type;
    if (each.test == Test::IsNull) {
      range.equal.emplace_back();
    } else if (each.test == Test::Equal) {
      auto value = equalValue(type, values[i]);
      if (!value) return false;
      range.equal.push_back(std::move(*value));
    } else {
      const bool isLower = each.test == Test::Greater || each.test == Test::GreaterOrEqual;
      (isLower ? range.lower : range.upper) = boundValue(type, each.test, values[i]);
      range.notNull = true;
    }
  }
  return true;
}

bool TableReader::wantsLookup() const {
  if (plan_.taken.empty() || plan_.ordered) return false;
  const bool isEqual = std::ranges::all_of(
      plan_.taken, [](const IndexPlan::Taken& each) { return each.test == Test::Equal; });
  if (!isEqual) return false;
  if (plan_.index < 0) return starts_ > kScansBefore;
  return starts_ > std::max(kFewLookups, table_.rowCount() / kShareOfRows);
}

void TableReader::fillLookup() {
  lookup_.emplace();
  const auto type = table_.columns()[static_cast<std::size_t>(soughtColumns_.front().column)].type;
  std::string identity;
  for (const auto rows = table_.scan(); rows->next();) {
    const jet::Row& row = rows->row();
    if (isNumber_) {
      const auto number = numberOf(row, soughtColumns_.front().column, type);
      if (number) lookup_->add(RowLookup::hashOf(*number), row.id());
    } else if (identify(row, identity)) {
      lookup_->add(RowLookup::hashOf(identity), row.id());
    }
  }
  lookup_->finish();
}

void TableReader::next() {
  ++rowsRead_;
  if (!plan_.ties.empty() && !lookup_) return nextInGroup();
  if (!nextMatch()) row_ = nullptr;
}

/// Goes to the next row that has the values sought.
bool TableReader::nextMatch() {
  while (advance()) {
    if (matches(*row_)) return true;
  }
  return false;
}

bool TableReader::advance() {
  if (!lookup_) {
    if (!cursor_ || !cursor_->next()) return false;
    row_ = &cursor_->row();
    return true;
  }
  while (lookupPlace_ != 0) {
    const jet::RowId id = lookup_->row(lookupPlace_);
    lookupPlace_ = lookup_->next(lookupPlace_);
    if (!single_.find(id)) continue;
    row_ = &single_.row();
    return true;
  }
  return false;
}

bool TableReader::matches(const jet::Row& row) {
  if (lookup_ ? isNumber_ : !testsCursor_) return true;
  return identify(row, own_) && own_ == sought_;
}

/// The identity of the columns that values are sought in; false where one of them is null.
bool TableReader::identify(const jet::Row& row, std::string& identity) const {
  identity.clear();
  for (const Demand& column : soughtColumns_) {
    if (!appendOwn(row, column, identity)) return false;
  }
  return true;
}

/// Appends the identity of a row's column; false for null.
bool TableReader::appendOwn(const jet::Row& row, const Demand& column,
                            std::string& identity) const {
  const auto type = table_.columns()[static_cast<std::size_t>(column.column)].type;
  if (jet::isText(type)) {
    std::string key;
    if (!row.sortKey(column.column, key)) return false;
    appendIdentity(key, identity);
    return true;
  }
  if (type == jet::ColumnType::Guid) {
    const runtime::Variant value = row.value(column.column);
    const auto* guid = std::get_if<runtime::Guid>(&value.get());
    if (guid == nullptr) return false;
    appendIdentity(std::string(guid->bytes.begin(), guid->bytes.end()), identity);
    return true;
  }
  const auto number = numberOf(row, column.column, type);
  if (!number) return false;
  appendIdentity(*number, identity);
  return true;
}

/// The next row of an index walk in which rows of one key stand in the order of the ties.
void TableReader::nextInGroup() {
  row_ = nullptr;
  if (groupPlace_ == group_.size() && !readGroup()) return;
  if (group_.empty()) {
    row_ = &held_;
  } else if (single_.find(group_[groupPlace_++])) {
    row_ = &single_.row();
  }
}

/// Reads all rows of the next index key; false when there are none. A single one is held, more of
/// them are listed.
bool TableReader::readGroup() {
  group_.clear();
  groupPlace_ = 0;
  if (!isAhead_) {
    if (!nextMatch()) return false;
    aheadKey_ = sortKey(*row_, indexColumns_);
  }
  held_ = cursor_->row();
  const std::string key = std::move(aheadKey_);
  std::vector<std::pair<std::string, jet::RowId>> members;
  while ((isAhead_ = nextMatch())) {
    aheadKey_ = sortKey(*row_, indexColumns_);
    if (aheadKey_ != key) break;
    if (members.empty()) members.emplace_back(sortKey(held_, plan_.ties), held_.id());
    members.emplace_back(sortKey(*row_, plan_.ties), row_->id());
  }
  std::ranges::stable_sort(members, {}, &std::pair<std::string, jet::RowId>::first);
  for (const auto& [tie, id] : members) group_.push_back(id);
  return true;
}

/// The columns' values as bytes in their order; null comes first.
std::string TableReader::sortKey(const jet::Row& row, std::span<const Demand> columns) const {
  std::string key;
  for (const Demand& column : columns) {
    if (row.isNull(column.column)) {
      key += '\0';
      continue;
    }
    key += '\1';
    const auto type = table_.columns()[static_cast<std::size_t>(column.column)].type;
    if (const auto number = numberOf(row, column.column, type)) {
      appendOrdered(*number, key);
    } else {
      std::string identity;
      if (jet::isText(type)) {
        row.sortKey(column.column, identity);
      } else {
        appendOwn(row, column, identity);
      }
      key += identity;
      key += '\0';
    }
  }
  return key;
}

}  // namespace jetsql
