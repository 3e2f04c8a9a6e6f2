#include "platform/jetsql/functions/FunctionCall.h"

#include <cmath>
#include <new>

#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Variant.h"

namespace jetsql {

bool FunctionCall::hasNull() const {
  for (int i = 0; i < count_; ++i) {
    if (isNull(i)) return true;
  }
  return false;
}

void FunctionCall::spend(std::size_t units) const {
  // Units of text that count as one step.
  constexpr std::size_t kUnitsAStep = 4;
  state_.budget.spend(static_cast<std::int64_t>(units / kUnitsAStep));
}

std::u16string FunctionCall::text(int argument) const {
  switch (kind(argument)) {
    case SQLITE_TEXT: {
      const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(values_[argument]));
      if (units == nullptr) throw std::bad_alloc();
      const auto size = static_cast<std::size_t>(sqlite3_value_bytes16(values_[argument])) / 2;
      spend(size);
      return {units, size};
    }
    case SQLITE_INTEGER:
      return runtime::toText(sqlite3_value_int64(values_[argument]));
    case SQLITE_FLOAT:
      return runtime::Variant(sqlite3_value_double(values_[argument])).toText();
    case SQLITE_NULL:
      return {};
    default:
      throw error::providerMismatch();
  }
}

double FunctionCall::number(int argument) const {
  switch (kind(argument)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return sqlite3_value_double(values_[argument]);
    case SQLITE_TEXT:
      try {
        return runtime::toDouble(text(argument));
      } catch (const runtime::RunTimeError& failure) {
        const bool isOverflow =
            failure.number() == static_cast<std::int32_t>(runtime::ErrorNumber::Overflow);
        throw isOverflow ? error::overflow() : error::providerMismatch();
      }
    case SQLITE_NULL:
      throw error::invalidNull();
    default:
      throw error::providerMismatch();
  }
}

std::int32_t FunctionCall::integer(int argument) const {
  return runtime::rounded<std::int32_t>(number(argument), error::overflow);
}

double FunctionCall::date(int argument) const {
  if (!isText(argument)) return number(argument);
  const std::u16string written = text(argument);
  if (const auto days = parseDate(written)) return *days;
  return number(argument);
}

std::string_view FunctionCall::bytes(int argument) const {
  const auto size = static_cast<std::size_t>(sqlite3_value_bytes(values_[argument]));
  return {static_cast<const char*>(sqlite3_value_blob(values_[argument])), size};
}

void FunctionCall::setText(std::u16string_view text) const {
  spend(text.size());
  sqlite3_result_text16(context_, text.empty() ? u"" : text.data(),
                        static_cast<int>(text.size() * 2), SQLITE_TRANSIENT);
}

void FunctionCall::setNumber(double number) const {
  if (!std::isfinite(number)) throw error::overflow();
  sqlite3_result_double(context_, number);
}

}  // namespace jetsql
