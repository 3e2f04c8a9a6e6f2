#include "platform/jetsql/functions/SqlFunction.h"

#include <new>

#include "platform/jetsql/functions/Function.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// The data that a registered function receives at its call.
struct Registered {
  const Function* function;
  EvaluationState* state;
};

Registered& registeredOf(sqlite3_context* context) {
  return *static_cast<Registered*>(sqlite3_user_data(context));
}

/// Runs a call; if it throws, stores the exception and tells SQLite to stop.
template <class Body>
void run(sqlite3_context* context, Body body) noexcept {
  if (!guarded(registeredOf(context).state->failure, body)) {
    sqlite3_result_error(context, "kept", -1);
  }
}

void runScalar(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
  run(context, [&] {
    const Registered& registered = registeredOf(context);
    const FunctionCall call(context, count, values, *registered.state);
    const bool passesNull = registered.function->nulls == Function::Nulls::Pass;
    if (!passesNull || !call.hasNull()) registered.function->scalar(call);
  });
}

/// SQLite allocates the size of a pointer for each group, initialized with zeros.
Aggregate** roomFor(sqlite3_context* context, bool create) {
  constexpr int kSize = sizeof(void*);
  return static_cast<Aggregate**>(sqlite3_aggregate_context(context, create ? kSize : 0));
}

void runStep(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
  run(context, [&] {
    const Registered& registered = registeredOf(context);
    Aggregate** room = roomFor(context, true);
    if (room == nullptr) throw std::bad_alloc();
    if (*room == nullptr) *room = registered.function->aggregate().release();
    (*room)->step({context, count, values, *registered.state});
  });
}

void runFinish(sqlite3_context* context) noexcept {
  run(context, [&] {
    const Registered& registered = registeredOf(context);
    Aggregate** room = roomFor(context, false);
    // A group without rows has no state, and its result is null.
    if (room == nullptr || *room == nullptr) return;
    const std::unique_ptr<Aggregate> aggregate(*room);
    *room = nullptr;
    aggregate->finish({context, 0, nullptr, *registered.state});
  });
}

void release(void* registered) {
  delete static_cast<Registered*>(registered);
}

}  // namespace

void registerFunction(sqlite3* connection, std::string_view name, EvaluationState& state) {
  const Function* function = functionWithTarget(name);
  if (function == nullptr) throw error::unregisteredFunction();
  const bool isAggregate = function->aggregate != nullptr;
  // SQLite releases the registration even if it refuses it.
  const int status = sqlite3_create_function_v2(
      connection, std::string(name).c_str(), -1,
      SQLITE_UTF16 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, new Registered{function, &state},
      isAggregate ? nullptr : runScalar, isAggregate ? runStep : nullptr,
      isAggregate ? runFinish : nullptr, release);
  if (status != SQLITE_OK) throw std::bad_alloc();
}

}  // namespace jetsql
