#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/jetsql/Translation.h"

namespace jetsql {

/// Writes SQLite's text for bound queries and expressions. What is asked of each source is noted
/// while expressions are written; FROM is written after them and gives just that.
class SqlWriter {
 public:
  SqlWriter(Translation& out, jet::TextOrder order) : out_(out), order_(order) {}

  /// A query that gives the columns asked for as c0, c1, …, in its order.
  std::string query(Query& query, const std::vector<Demand>& wanted);

 private:
  /// A SELECT in the making: what it gives, its order, and all from FROM on.
  struct Stage {
    std::vector<std::string> outputs;
    std::vector<std::pair<std::string, bool>> order;  ///< true for descending
    std::vector<std::string> ties;
    std::string tail;
  };

  // Queries.
  Stage selectStage(Query& query, const std::vector<Demand>& wanted,
                    std::vector<std::string>& keys);
  Stage unionStage(Query& query, const std::vector<Demand>& wanted);
  std::string unionArm(Query& arm, const Query& whole, const std::vector<Demand>& wanted);
  Stage distinctStage(Stage inner, const std::vector<std::string>& keys);
  Stage topStage(Stage inner, const Top& top);
  std::string finish(const Stage& stage) const;
  std::string orderText(const Stage& stage, bool withTies) const;
  void addOrder(const Query& query, Stage& stage, const std::vector<std::string>& keys);
  std::vector<std::string> rowKeys(const Query& query);
  std::vector<std::string> distinctRowKeys(const Select& select);

  // FROM.
  void prepareJoins(FromItem& item, JoinedSource* around);
  void writeConditions(FromItem& item);
  std::string joinCondition(const FromItem& join);
  std::string fromText(Select& select);
  std::string joinText(FromItem& item);
  void appendInner(FromItem& item, std::string& whole, std::string& conditions);
  std::string wrapped(FromItem& item);
  std::string sourceText(Source& source);
  std::string reference(Source& source, Demand demand);

  // Expressions.
  std::string form(const Expression& expression, Form form, int part = 0);
  std::string value(const Expression& expression);
  std::string key(const Expression& expression);
  std::string exact(const Expression& expression);
  std::string asText(const Expression& expression);
  std::string asNumber(const Expression& expression);
  std::string condition(const Expression& expression);
  std::string plainValue(const Expression& expression);
  std::string operatorValue(const Expression& expression);
  std::string chain(const Expression& expression);
  std::string concatenation(const Expression& expression);
  std::string logical(const Expression& expression);
  std::string comparison(Operator op, const Expression& a, const Expression& b);
  std::string between(const Expression& expression);
  std::string inList(const Expression& expression);
  std::string subqueryCondition(const Expression& expression);
  std::string scalarQuery(const Expression& expression, Form form);
  std::string callValue(const Expression& expression);
  std::string aggregate(const Expression& expression);
  std::string choice(const Expression& expression, bool asCondition);
  bool isGroupTerm(const Expression& expression) const;

  std::string call(std::string_view function, const std::vector<std::string>& arguments);
  std::string text(const std::u16string& text);
  std::string textKey(const std::u16string& text);
  std::string parameter(Parameter parameter);
  static std::string number(double number);
  int fresh() { return ++fresh_; }
  void checkLength(std::size_t length) const;

  Translation& out_;
  jet::TextOrder order_;
  /// The grouped SELECT whose columns are being written, outside its aggregates.
  const Select* grouping_ = nullptr;
  std::vector<std::unique_ptr<JoinedSource>> joins_;
  int fresh_ = 0;
};

/// Types that can be compared with each other compare in one of these ways.
enum class Comparing : std::uint8_t { Numbers, Texts, Bytes, GuidText, Null, Mixed };
/// Raises the mismatch error for types that can't be compared.
Comparing comparing(Type a, Type b);

}  // namespace jetsql
