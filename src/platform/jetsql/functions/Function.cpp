#include "platform/jetsql/functions/Function.h"

#include <algorithm>

#include "platform/jetsql/functions/AggregateFunctions.h"
#include "platform/jetsql/functions/ConversionFunctions.h"
#include "platform/jetsql/functions/DateFunctions.h"
#include "platform/jetsql/functions/NumberFunctions.h"
#include "platform/jetsql/functions/TextFunctions.h"
#include "platform/jetsql/syntax/Token.h"

namespace jetsql {
namespace {

using W = Function::Writing;
constexpr int kMany = 100;

/// The functions that `writing/CallWriter` and `ExpressionWriter` write as SQL expressions (CASE,
/// ifnull, IS NULL), which evaluate only the chosen argument.
constexpr Function kInlineFunctions[] = {
    {u"IIF", 3, 3, "v", Type::Any, "", nullptr, kPass, kFixed, W::Iif},
    {u"SWITCH", 2, kMany, "v", Type::Any, "", nullptr, kPass, kFixed, W::Switch},
    {u"CHOOSE", 2, kMany, "v", Type::Any, "", nullptr, kPass, kFixed, W::Choose},
    {u"NZ", 1, 2, "v", Type::Any, "", nullptr, kPass, kFixed, W::Fallback},
    {u"ISNULL", 1, 1, "v", Type::Boolean, "", nullptr, kPass, kFixed, W::NullTest},
};

template <class Test>
const Function* find(Test isSought) {
  for (const std::span<const Function> functions :
       {std::span<const Function>(kInlineFunctions), textFunctions(), conversionFunctions(),
        numberFunctions(), dateFunctions(), aggregateFunctions()}) {
    const auto found = std::ranges::find_if(functions, isSought);
    if (found != functions.end()) return &*found;
  }
  return nullptr;
}

}  // namespace

const Function* functionNamed(std::u16string_view name) {
  if (name.ends_with(u'$')) name.remove_suffix(1);
  if (name.empty()) return nullptr;
  return find([name](const Function& each) { return sameWord(each.name, name); });
}

const Function* functionWithTarget(std::string_view target) {
  return find([target](const Function& each) { return each.target == target; });
}

}  // namespace jetsql
