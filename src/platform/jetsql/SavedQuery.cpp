#include "platform/jetsql/SavedQuery.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Parser.h"
#include "platform/runtime/CodePage.h"

namespace jetsql {
namespace {

/// Attributes of a stored query's rows.
enum Attribute : std::uint8_t {
  kKind = 1,
  kParameter = 2,
  kOptions = 3,
  kForeignDatabase = 4,
  kInput = 5,
  kColumn = 6,
  kJoin = 7,
  kWhere = 8,
  kGroup = 9,
  kHaving = 10,
  kOrder = 11,
};

constexpr std::int32_t kSelectKind = 1;
constexpr std::int32_t kUnionKind = 9;

/// Bits of the options row.
constexpr std::int32_t kAllColumns = 0x01;
constexpr std::int32_t kDistinct = 0x02;
constexpr std::int32_t kDistinctRow = 0x08;
constexpr std::int32_t kTop = 0x10;
constexpr std::int32_t kPercent = 0x20;

constexpr std::size_t kMostInputs = 256;

std::u16string unbracketed(std::u16string_view name) {
  if (name.size() >= 2 && name.front() == u'[' && name.back() == u']') {
    name = name.substr(1, name.size() - 2);
  }
  return std::u16string(name);
}

class Builder {
 public:
  Builder(std::u16string_view name, std::span<const jet::QueryRow> rows)
      : name_(name), rows_(rows) {}

  std::unique_ptr<Query> build() {
    std::int32_t kind = kSelectKind;
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute == kKind) kind = row.flag;
      if (row.attribute == kParameter) throw error::missingParameter();
      // A source that has a name has a text only where it lies in another database.
      const bool isForeignSource =
          row.attribute == kInput && !row.name1.empty() && !row.expression.empty();
      if (row.attribute == kForeignDatabase || isForeignSource) {
        throw error::engine(u"The query '" + std::u16string(name_) +
                            u"' reads another database, which can't be opened here.");
      }
      if (row.attribute == kOptions) options_ = &row;
    }
    std::unique_ptr<Query> query;
    if (kind == kUnionKind) {
      query = unionQuery();
    } else if (kind == kSelectKind) {
      query = selectQuery();
    } else {
      throw error::engine(u"The query '" + std::u16string(name_) +
                          u"' is no select query and can't be opened as a table.");
    }
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute != kOrder) continue;
      query->orderBy.push_back({Parser(row.expression).loneExpression(), row.name1 == u"D", -1});
    }
    return query;
  }

 private:
  bool has(std::int32_t option) const {
    return options_ != nullptr && (options_->flag & option) != 0;
  }

  [[noreturn]] void failInconsistent() const {
    throw error::engine(u"The query '" + std::u16string(name_) + u"' is damaged.");
  }

  /// Its halves are stored as text.
  std::unique_ptr<Query> unionQuery() const {
    std::vector<std::unique_ptr<Query>> halves;
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute == kInput) halves.push_back(Parser(row.expression).statement());
    }
    if (halves.size() != 2) failInconsistent();
    for (const auto& half : halves) {
      if (half->hasParameters) throw error::missingParameter();
    }
    auto query = std::make_unique<Query>();
    query->all = !has(kDistinct);
    query->left = std::move(halves[0]);
    query->right = std::move(halves[1]);
    return query;
  }

  std::unique_ptr<Query> selectQuery() {
    auto query = std::make_unique<Query>();
    query->select = std::make_unique<Select>();
    Select& select = *query->select;
    select.distinct = has(kDistinct);
    select.distinctRow = has(kDistinctRow);
    if (has(kTop)) select.top = Top{topCount(), has(kPercent)};
    for (const jet::QueryRow& row : rows_) addRow(row, select);
    if (has(kAllColumns)) select.items.emplace_back();
    for (Input& input : inputs_) select.from.push_back(std::move(input.item));
    return query;
  }

  double topCount() const {
    double count = 0;
    const std::string digits = runtime::toUtf8(options_->name1);
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) failInconsistent();
    return count;
  }

  void addRow(const jet::QueryRow& row, Select& select) {
    switch (row.attribute) {
      case kInput:
        addInput(row);
        break;
      case kColumn: {
        SelectItem item = Parser(row.expression).loneItem();
        if (!row.name1.empty()) item.alias = unbracketed(row.name1);
        select.items.push_back(std::move(item));
        break;
      }
      case kJoin:
        addJoin(row);
        break;
      case kWhere:
        select.where = Parser(row.expression).loneExpression();
        break;
      case kGroup:
        select.groupBy.push_back(Parser(row.expression).loneExpression());
        break;
      case kHaving:
        select.having = Parser(row.expression).loneExpression();
        break;
      default:
        break;
    }
  }

  /// A source of FROM: at first a table, later perhaps a join, known by all names in it.
  struct Input {
    std::vector<std::u16string> names;
    std::unique_ptr<FromItem> item;
  };

  void addInput(const jet::QueryRow& row) {
    if (inputs_.size() >= kMostInputs) throw error::tooComplex();
    auto item = std::make_unique<FromItem>();
    item->name = unbracketed(row.name1);
    item->alias = unbracketed(row.name2);
    if (item->name.empty()) item->query = Parser(row.expression).statement();
    Input input;
    input.names.push_back(item->alias.empty() ? item->name : item->alias);
    input.item = std::move(item);
    inputs_.push_back(std::move(input));
  }

  /// The place of the source that holds the name; a plain table is taken in where none does.
  std::size_t inputNamed(const std::u16string& written) {
    const std::u16string name = unbracketed(written);
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
      for (const std::u16string& each : inputs_[i].names) {
        if (jet::sameName(each, name)) return i;
      }
    }
    jet::QueryRow row;
    row.name1 = name;
    addInput(row);
    return inputs_.size() - 1;
  }

  void addJoin(const jet::QueryRow& row) {
    if (row.flag < 1 || row.flag > 3) failInconsistent();
    const auto kind = static_cast<JoinKind>(row.flag - 1);
    const std::size_t left = inputNamed(row.name1);
    const std::size_t right = inputNamed(row.name2);
    ExpressionPtr condition = Parser(row.expression).loneExpression();
    if (left == right) {
      addCondition(*inputs_[left].item, kind, std::move(condition));
      return;
    }
    Input joined;
    joined.names = std::move(inputs_[left].names);
    for (std::u16string& name : inputs_[right].names) joined.names.push_back(std::move(name));
    joined.item = std::make_unique<FromItem>();
    joined.item->join = kind;
    joined.item->left = std::move(inputs_[left].item);
    joined.item->right = std::move(inputs_[right].item);
    joined.item->condition = std::move(condition);
    const auto [low, high] = std::minmax(left, right);
    inputs_.erase(inputs_.begin() + static_cast<std::ptrdiff_t>(high));
    inputs_.erase(inputs_.begin() + static_cast<std::ptrdiff_t>(low));
    inputs_.push_back(std::move(joined));
  }

  /// A further condition of the join that holds both tables already; the later ones stand in front.
  void addCondition(FromItem& join, JoinKind kind, ExpressionPtr condition) const {
    if (!join.isJoin() || join.join != kind) failInconsistent();
    auto both = std::make_unique<Expression>(Expression::Kind::Binary);
    both->op = Operator::And;
    both->height = std::max(condition->height, join.condition->height) + 1;
    if (both->height > kTallestExpression) throw error::tooComplex();
    both->arguments.push_back(std::move(condition));
    both->arguments.push_back(std::move(join.condition));
    join.condition = std::move(both);
  }

  std::u16string_view name_;
  std::span<const jet::QueryRow> rows_;
  const jet::QueryRow* options_ = nullptr;
  std::vector<Input> inputs_;
};

}  // namespace

std::unique_ptr<Query> queryFromRows(std::u16string_view name,
                                     std::span<const jet::QueryRow> rows) {
  return Builder(name, rows).build();
}

}  // namespace jetsql
