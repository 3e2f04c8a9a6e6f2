#include <memory>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/Like.h"
#include "platform/jetsql/SqlFunction.h"

namespace jetsql {
namespace {

/// The key of a text; anything else stays what it is.
void key(const FunctionCall& call) {
  std::string made;
  if (sortKey(call.order(), call.raw(0), made)) {
    call.giveBytes(made);
  } else {
    call.giveSame(call.raw(0));
  }
}

/// Compares two values of which only the rows tell the types: numbers come before texts.
void compare(const FunctionCall& call) {
  if (call.hasNull()) return;
  if (call.isBytes(0) || call.isBytes(1)) throw error::typeMismatch();
  const bool leftText = call.isText(0);
  const bool rightText = call.isText(1);
  if (leftText != rightText) return call.giveWhole(leftText ? 1 : -1);
  if (!leftText) {
    const double left = call.number(0);
    const double right = call.number(1);
    return call.giveWhole(left < right ? -1 : (left > right ? 1 : 0));
  }
  std::string left;
  std::string right;
  sortKey(call.order(), call.raw(0), left);
  sortKey(call.order(), call.raw(1), right);
  call.giveWhole(left < right ? -1 : (left > right ? 1 : 0));
}

/// Orders two comparable values: both keys, or both numbers.
int ordered(const FunctionCall& call, int a, int b) {
  if (call.isBytes(a) && call.isBytes(b)) return call.bytes(a).compare(call.bytes(b));
  const double left = call.number(a);
  const double right = call.number(b);
  return left < right ? -1 : (left > right ? 1 : 0);
}

/// True between two bounds in either order; texts come as their keys.
void between(const FunctionCall& call) {
  if (call.hasNull()) return;
  const bool isForward = ordered(call, 0, 1) >= 0 && ordered(call, 0, 2) <= 0;
  const bool isBackward = ordered(call, 0, 2) >= 0 && ordered(call, 0, 1) <= 0;
  call.giveWhole(isForward || isBackward ? 1 : 0);
}

void giveMatch(const FunctionCall& call, const LikePattern& pattern) {
  const std::u16string text = call.text(0);
  call.spend(text.size() * pattern.size());
  call.giveWhole(pattern.matches(text) ? 1 : 0);
}

/// A pattern that is the same for all rows is read once.
template <LikePattern::Dialect dialect>
void like(const FunctionCall& call) {
  if (call.hasNull()) return;
  constexpr int kPattern = 1;
  const auto* known =
      static_cast<const LikePattern*>(sqlite3_get_auxdata(call.context(), kPattern));
  if (known != nullptr) return giveMatch(call, *known);
  auto pattern = std::make_unique<LikePattern>(call.text(kPattern), dialect);
  giveMatch(call, *pattern);
  sqlite3_set_auxdata(call.context(), kPattern, pattern.release(),
                      [](void* old) { delete static_cast<LikePattern*>(old); });
}

constexpr SqlFunction kFunctions[] = {
    {"jet_key", key, nullptr},
    {"jet_compare", compare, nullptr},
    {"jet_between", between, nullptr},
    {"jet_like", like<LikePattern::Dialect::Like>, nullptr},
    {"jet_alike", like<LikePattern::Dialect::Alike>, nullptr},
};

}  // namespace

std::span<const SqlFunction> comparingFunctions() {
  return kFunctions;
}

}  // namespace jetsql
