#include "platform/jetsql/SoughtValue.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace jetsql {
namespace {

using Test = Restriction::Test;
using runtime::Variant;

constexpr double kTenThousand = runtime::Currency::kOne;
constexpr double kLargestAmount = 9.2e18;

struct WholeRange {
  std::int32_t low;
  std::int32_t high;
};

std::optional<WholeRange> wholeRange(jet::ColumnType type) {
  switch (type) {
    case jet::ColumnType::Byte:
      return WholeRange{0, 255};
    case jet::ColumnType::Integer:
      return WholeRange{std::numeric_limits<std::int16_t>::min(),
                        std::numeric_limits<std::int16_t>::max()};
    case jet::ColumnType::Long:
      return WholeRange{std::numeric_limits<std::int32_t>::min(),
                        std::numeric_limits<std::int32_t>::max()};
    default:
      return std::nullopt;
  }
}

Variant wholeVariant(jet::ColumnType type, double number) {
  if (type == jet::ColumnType::Byte) return static_cast<std::uint8_t>(number);
  if (type == jet::ColumnType::Integer) return static_cast<std::int16_t>(number);
  return static_cast<std::int32_t>(number);
}

bool isLower(Test test) {
  return test == Test::Greater || test == Test::GreaterOrEqual;
}

}  // namespace

std::optional<Variant> equalValue(jet::ColumnType type, const SoughtValue& sought) {
  if (sought.kind == SoughtValue::Kind::Null) return std::nullopt;
  const bool isBytes = sought.kind == SoughtValue::Kind::Bytes;
  if (jet::isText(type)) {
    if (!isBytes) return std::nullopt;
    return runtime::Binary(sought.bytes.begin(), sought.bytes.end());
  }
  if (type == jet::ColumnType::Guid) {
    runtime::Guid guid;
    if (!isBytes || sought.bytes.size() != guid.bytes.size()) return std::nullopt;
    std::memcpy(guid.bytes.data(), sought.bytes.data(), guid.bytes.size());
    return guid;
  }
  if (isBytes) return std::nullopt;
  const double number = sought.asNumber();
  if (const auto range = wholeRange(type)) {
    if (number < range->low || number > range->high || std::trunc(number) != number) {
      return std::nullopt;
    }
    return wholeVariant(type, number);
  }
  switch (type) {
    case jet::ColumnType::Boolean:
      if (number != 0 && number != -1) return std::nullopt;
      return number != 0;
    case jet::ColumnType::Currency: {
      const double scaled = std::nearbyint(number * kTenThousand);
      if (!(std::fabs(scaled) < kLargestAmount) || scaled / kTenThousand != number) {
        return std::nullopt;
      }
      return runtime::Currency{static_cast<std::int64_t>(scaled)};
    }
    case jet::ColumnType::Single: {
      const auto narrow = static_cast<float>(number);
      if (double{narrow} != number) return std::nullopt;
      return narrow;
    }
    case jet::ColumnType::DateTime:
      return runtime::Date{number};
    default:
      return number;
  }
}

std::optional<Variant> boundValue(jet::ColumnType type, Test test, const SoughtValue& sought) {
  if (jet::isText(type) || type == jet::ColumnType::Guid) return equalValue(type, sought);
  const double number = sought.asNumber();
  if (const auto range = wholeRange(type)) {
    const double whole = isLower(test) ? std::ceil(number) : std::floor(number);
    if (isLower(test) ? whole < range->low : whole > range->high) return std::nullopt;
    // A bound that leaves nothing becomes one at the far end, which the caller's test empties.
    return wholeVariant(type, std::clamp<double>(whole, range->low, range->high));
  }
  switch (type) {
    case jet::ColumnType::Currency: {
      const double scaled = isLower(test) ? std::floor(number * kTenThousand) - 1
                                          : std::ceil(number * kTenThousand) + 1;
      if (!(std::fabs(scaled) < kLargestAmount)) return std::nullopt;
      return runtime::Currency{static_cast<std::int64_t>(scaled)};
    }
    case jet::ColumnType::Single: {
      constexpr float kFar = std::numeric_limits<float>::infinity();
      const float outward =
          std::nextafter(static_cast<float>(number), isLower(test) ? -kFar : kFar);
      if (!std::isfinite(outward)) return std::nullopt;
      return outward;
    }
    case jet::ColumnType::Double:
      return number;
    case jet::ColumnType::DateTime:
      return runtime::Date{number};
    default:
      return std::nullopt;
  }
}

void appendIdentity(double number, std::string& identity) {
  // Both zeros are equal.
  const double same = number == 0 ? 0 : number;
  char bytes[sizeof same];
  std::memcpy(bytes, &same, sizeof same);
  identity.append(bytes, sizeof bytes);
}

void appendIdentity(std::string_view bytes, std::string& identity) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  char length[sizeof size];
  std::memcpy(length, &size, sizeof size);
  identity.append(length, sizeof length);
  identity.append(bytes);
}

}  // namespace jetsql
