#include "editor/ListEntry.h"

#include <cstddef>

#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"

namespace listentry {
namespace {

constexpr std::ptrdiff_t kDescriptionLength = 30;
constexpr std::size_t kDescriptionFill = 40;
constexpr std::size_t kGapLength = 100;
constexpr std::ptrdiff_t kIdStart = 130;

}  // namespace

std::u16string make(std::u16string_view description, std::u16string_view id) {
  const std::u16string filled = std::u16string(description) + runtime::spaces(kDescriptionFill);
  return runtime::left(filled, kDescriptionLength) + runtime::spaces(kGapLength) +
         std::u16string(id);
}

std::u16string descriptionOf(std::u16string_view entry) {
  return runtime::trim(runtime::left(entry, kDescriptionLength));
}

std::int16_t idOf(std::u16string_view entry) {
  const auto length = static_cast<std::ptrdiff_t>(entry.size()) - kIdStart;
  return runtime::toInteger(runtime::trim(runtime::right(entry, length)));
}

}  // namespace listentry
