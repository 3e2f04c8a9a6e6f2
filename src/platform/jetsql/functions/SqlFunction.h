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

/// A function of ours within SQLite: one of the two is set.
struct SqlFunction {
  /// A scalar function either sees nulls, or is null where an argument is.
  enum class Nulls : std::uint8_t { Pass, Seen };

  std::string_view name;
  void (*scalar)(const FunctionCall&) = nullptr;
  Nulls nulls = Nulls::Pass;
  std::unique_ptr<Aggregate> (*aggregate)() = nullptr;
};

/// Makes a function known to a connection, which must be closed before `session` ends.
void registerFunction(sqlite3* connection, std::string_view name, FunctionContext& session);

}  // namespace jetsql
