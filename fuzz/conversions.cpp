// Numeric texts and the code page: every text yields a number, Overflow (6) or Type mismatch (13),
// and every byte survives the conversion from the code page and back.
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/RunTimeError.h"

namespace {

template <class Convert>
void convert(const Convert& use, bool mayMismatch) {
  try {
    use();
  } catch (const runtime::RunTimeError& fault) {
    if (fault.number() != 6 && !(mayMismatch && fault.number() == 13)) __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::u16string text = runtime::fromCodePage(bytes);
  if (runtime::toCodePage(text) != bytes) __builtin_trap();
  static_cast<void>(runtime::toCodePage(runtime::fromUtf8(bytes)));

  convert(
      [&] {
        const std::int16_t narrow = runtime::toInteger(text);
        const std::int32_t wide = runtime::toLong(text);
        // "&H9550" is a bit pattern: its top bit is the sign in 16 bits, but not in 32.
        const bool isPattern = text.find(u'&') != text.npos;
        if (isPattern ? static_cast<std::int16_t>(wide) != narrow : wide != narrow)
          __builtin_trap();
        if (runtime::toInteger(runtime::toText(narrow)) != narrow) __builtin_trap();
      },
      true);
  convert([&] { static_cast<void>(runtime::toLong(text)); }, true);
  convert([&] { static_cast<void>(runtime::toInteger(runtime::leadingNumber(text))); }, false);
  return 0;
}
