#include "platform/jetsql/SqlFunction.h"

#include <cmath>
#include <limits>
#include <new>

#include "platform/jetsql/DateText.h"
#include "platform/jetsql/Error.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

/// What a registered function finds at its call.
struct Registered {
  const SqlFunction* function;
  FunctionContext* session;
};

const SqlFunction* find(std::string_view name) {
  for (const auto functions : {comparingFunctions(), textFunctions(), conversionFunctions(),
                               numberFunctions(), dateFunctions(), aggregateFunctions()}) {
    for (const SqlFunction& each : functions) {
      if (each.name == name) return &each;
    }
  }
  return nullptr;
}

Registered& registeredOf(sqlite3_context* context) {
  return *static_cast<Registered*>(sqlite3_user_data(context));
}

/// Runs a call; what it throws is kept, and SQLite told to stop.
template <class Body>
void guarded(sqlite3_context* context, Body body) noexcept {
  try {
    body();
  } catch (...) {
    registeredOf(context).session->failure.keep();
    sqlite3_result_error(context, "kept", -1);
  }
}

void runScalar(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
  guarded(context, [&] {
    const Registered& registered = registeredOf(context);
    registered.function->scalar({context, count, values, *registered.session});
  });
}

/// SQLite keeps a pointer's room for each group, zeroed at first.
Aggregate** roomFor(sqlite3_context* context, bool create) {
  constexpr int kSize = sizeof(void*);
  return static_cast<Aggregate**>(sqlite3_aggregate_context(context, create ? kSize : 0));
}

void runStep(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
  guarded(context, [&] {
    const Registered& registered = registeredOf(context);
    Aggregate** room = roomFor(context, true);
    if (room == nullptr) throw std::bad_alloc();
    if (*room == nullptr) *room = registered.function->aggregate().release();
    (*room)->step({context, count, values, *registered.session});
  });
}

void runFinish(sqlite3_context* context) noexcept {
  guarded(context, [&] {
    const Registered& registered = registeredOf(context);
    Aggregate** room = roomFor(context, false);
    // A group without rows has no state, and null for a result.
    if (room == nullptr || *room == nullptr) return;
    const std::unique_ptr<Aggregate> aggregate(*room);
    *room = nullptr;
    aggregate->finish({context, 0, nullptr, *registered.session});
  });
}

void release(void* registered) {
  delete static_cast<Registered*>(registered);
}

}  // namespace

void registerFunction(sqlite3* connection, std::string_view name, FunctionContext& session) {
  const SqlFunction* function = find(name);
  if (function == nullptr) throw error::engine(u"A function of the dialect is missing.");
  const bool isAggregate = function->aggregate != nullptr;
  // SQLite releases the registration also when it refuses it.
  const int status = sqlite3_create_function_v2(
      connection, std::string(name).c_str(), -1,
      SQLITE_UTF16 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, new Registered{function, &session},
      isAggregate ? nullptr : runScalar, isAggregate ? runStep : nullptr,
      isAggregate ? runFinish : nullptr, release);
  if (status != SQLITE_OK) throw std::bad_alloc();
}

bool FunctionCall::isNull(int argument) const {
  return sqlite3_value_type(values_[argument]) == SQLITE_NULL;
}

bool FunctionCall::isText(int argument) const {
  return sqlite3_value_type(values_[argument]) == SQLITE_TEXT;
}

bool FunctionCall::isBytes(int argument) const {
  return sqlite3_value_type(values_[argument]) == SQLITE_BLOB;
}

bool FunctionCall::hasNull() const {
  for (int i = 0; i < count_; ++i) {
    if (isNull(i)) return true;
  }
  return false;
}

void FunctionCall::spend(std::size_t units) const {
  // So many units of text go in one step.
  constexpr std::size_t kUnitsAStep = 4;
  session_.budget.spend(static_cast<std::int64_t>(units / kUnitsAStep));
}

std::u16string FunctionCall::text(int argument) const {
  switch (sqlite3_value_type(values_[argument])) {
    case SQLITE_TEXT: {
      const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(values_[argument]));
      if (units == nullptr) throw std::bad_alloc();
      const auto size = static_cast<std::size_t>(sqlite3_value_bytes16(values_[argument])) / 2;
      spend(size);
      return {units, size};
    }
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return numberText(values_[argument]);
    case SQLITE_NULL:
      return {};
    default:
      throw error::typeMismatch();
  }
}

double FunctionCall::number(int argument) const {
  switch (sqlite3_value_type(values_[argument])) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return sqlite3_value_double(values_[argument]);
    case SQLITE_TEXT:
      try {
        return runtime::toDouble(text(argument));
      } catch (const runtime::RunTimeError& failure) {
        const bool isOverflow =
            failure.number() == static_cast<std::int32_t>(runtime::ErrorNumber::Overflow);
        throw isOverflow ? error::overflow() : error::typeMismatch();
      }
    case SQLITE_NULL:
      throw error::invalidNull();
    default:
      throw error::typeMismatch();
  }
}

std::int32_t FunctionCall::whole(int argument) const {
  const double rounded = std::nearbyint(number(argument));
  if (!(rounded >= std::numeric_limits<std::int32_t>::min()) ||
      !(rounded <= std::numeric_limits<std::int32_t>::max())) {
    throw error::overflow();
  }
  return static_cast<std::int32_t>(rounded);
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

void FunctionCall::giveText(std::u16string_view text) const {
  spend(text.size());
  sqlite3_result_text16(context_, text.empty() ? u"" : text.data(),
                        static_cast<int>(text.size() * 2), SQLITE_TRANSIENT);
}

void FunctionCall::giveNumber(double number) const {
  if (!std::isfinite(number)) throw error::overflow();
  sqlite3_result_double(context_, number);
}

void FunctionCall::giveWhole(std::int64_t number) const {
  sqlite3_result_int64(context_, number);
}

void FunctionCall::giveBytes(std::string_view bytes) const {
  sqlite3_result_blob64(context_, bytes.empty() ? "" : bytes.data(), bytes.size(),
                        SQLITE_TRANSIENT);
}

std::u16string numberText(sqlite3_value* value) {
  if (sqlite3_value_type(value) == SQLITE_FLOAT) {
    return runtime::Variant(sqlite3_value_double(value)).toText();
  }
  const std::string digits = std::to_string(sqlite3_value_int64(value));
  return {digits.begin(), digits.end()};
}

bool sortKey(jet::TextOrder order, sqlite3_value* value, std::string& key) {
  key.clear();
  if (sqlite3_value_type(value) != SQLITE_TEXT) return false;
  const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(value));
  if (units == nullptr) throw std::bad_alloc();
  jet::appendTextKey(order, {units, static_cast<std::size_t>(sqlite3_value_bytes16(value)) / 2},
                     key);
  return true;
}

}  // namespace jetsql
