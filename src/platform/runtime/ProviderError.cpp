#include "platform/runtime/ProviderError.h"

#include <string>
#include <utility>

namespace runtime {

RunTimeError providerError(ProviderNumber number,
                           std::initializer_list<std::u16string_view> parts) {
  std::u16string text;
  for (const std::u16string_view part : parts) text += part;
  return {static_cast<std::int32_t>(number), std::move(text)};
}

RunTimeError generalError(std::u16string_view text) {
  return providerError(ProviderNumber::General, {text});
}

RunTimeError providerMismatch() {
  return providerError(ProviderNumber::Mismatch, {u"Data type mismatch in criteria expression."});
}

}  // namespace runtime
