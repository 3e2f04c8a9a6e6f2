#pragma once

#include <memory>
#include <string_view>

#include "platform/jetsql/functions/FunctionCall.h"

namespace jetsql {

/// A function over the rows of a group.
class Aggregate {
 public:
  virtual ~Aggregate() = default;
  virtual void step(const FunctionCall& call) = 0;
  virtual void finish(const FunctionCall& call) = 0;
};

/// Registers one of our functions, by its name within SQLite, with a connection, which must be
/// closed before `state` ends.
void registerFunction(sqlite3* connection, std::string_view name, EvaluationState& state);

}  // namespace jetsql
