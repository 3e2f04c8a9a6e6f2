#include "platform/jetsql/sqlite/TableReader.h"

#include <algorithm>

namespace jetsql {
namespace {

using Test = Restriction::Test;

/// Numbers of the plans without an index: a scan, and a lookup by column 0; those by further
/// columns are lower.
constexpr int kScan = -1;
constexpr int kFirstLookup = -2;

/// A hash table of the rows pays off once more values were looked up than this number, and than the
/// table's rows divided by `kShareOfRows`.
constexpr std::uint32_t kFewLookups = 64;
constexpr std::uint32_t kShareOfRows = 64;
/// Number of scans before the hash table is built where there is no index.
constexpr std::uint32_t kScansBefore = 1;

}  // namespace

PlanCode PlanCode::of(const IndexPlan& plan) {
  PlanCode code{.number = kScan, .tests = {}};
  if (plan.index) {
    code.number = static_cast<int>(plan.index->value());
  } else if (!plan.taken.empty()) {
    code.number = kFirstLookup - plan.taken.front().column.value();
  }
  for (const Restriction& each : plan.taken) code.tests += static_cast<char>(each.test);
  return code;
}

std::optional<jet::IndexNumber> PlanCode::index() const {
  return number > kScan ? std::optional(jet::IndexNumber(number)) : std::nullopt;
}

std::vector<jet::ColumnIndex> PlanCode::columns(const jet::Table& table) const {
  if (number == kScan) return {};
  if (number < kScan) return {jet::ColumnIndex(kFirstLookup - number)};
  std::vector<jet::ColumnIndex> columns;
  std::size_t position = 0;
  for (const char test : tests) {
    columns.push_back(table.index(*index()).columns[position].column);
    // Both bounds are of one column, the last one.
    if (test == static_cast<char>(Test::Equal) || test == static_cast<char>(Test::IsNull)) {
      ++position;
    }
  }
  return columns;
}

TableReader::TableReader(const jet::Table& table, const PlanCode& plan)
    : table_(table),
      index_(plan.index()),
      tests_(plan.tests),
      columns_(plan.columns(table)),
      isEquality_(tests_.find_first_not_of('=') == std::string::npos),
      single_(table.reader()) {}

void TableReader::start(const std::vector<runtime::Variant>& values) {
  ++starts_;
  row_ = nullptr;
  cursor_.reset();
  position_ = 0;
  // Nothing equals null, or is less or greater.
  for (std::size_t i = 0; i < tests_.size(); ++i) {
    if (values[i].isNull() && tests_[i] != static_cast<char>(Test::IsNull)) return;
  }
  if (!lookup_ && wantsLookup()) lookup_.emplace(table_, columns_);
  if (lookup_) {
    position_ = lookup_->first(values);
  } else {
    cursor_ = index_ ? table_.walk(*index_, rangeOf(values)) : table_.scan();
  }
  next();
}

bool TableReader::wantsLookup() const {
  if (columns_.empty() || !isEquality_) return false;
  if (!index_) return starts_ > kScansBefore;
  return starts_ > std::max(kFewLookups, table_.rowCount() / kShareOfRows);
}

jet::IndexRange TableReader::rangeOf(const std::vector<runtime::Variant>& values) const {
  jet::IndexRange range;
  for (std::size_t i = 0; i < tests_.size(); ++i) {
    switch (static_cast<Test>(tests_[i])) {
      case Test::Equal:
        range.equal.push_back(values[i]);
        break;
      case Test::IsNull:
        range.equal.emplace_back();
        break;
      case Test::Lower:
        range.lower = values[i];
        break;
      case Test::Upper:
        range.upper = values[i];
        break;
    }
  }
  range.notNull = range.lower || range.upper;
  return range;
}

void TableReader::next() {
  row_ = nullptr;
  if (cursor_ && cursor_->next()) row_ = &cursor_->row();
  while (position_ != 0 && row_ == nullptr) {
    if (single_.find(lookup_->row(position_))) row_ = &single_.row();
    position_ = lookup_->next(position_);
  }
}

}  // namespace jetsql
