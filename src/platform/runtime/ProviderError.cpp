#include "platform/runtime/ProviderError.h"

#include <string>
#include <utility>

namespace runtime {

RunTimeError providerError(ProviderNumber number,
                           std::initializer_list<std::u16string_view> words) {
  std::u16string text;
  for (const std::u16string_view piece : words) text += piece;
  return {static_cast<std::int32_t>(number), std::move(text)};
}

RunTimeError generalError(std::u16string_view words) {
  return providerError(ProviderNumber::General, {words});
}

RunTimeError typeMismatch() {
  return providerError(ProviderNumber::Mismatch, {u"Data type mismatch in criteria expression."});
}

}  // namespace runtime
