#include "layoutdata/KeyRecord.h"

#include "platform/runtime/Conversion.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace layoutdata {

namespace {
constexpr char16_t kSeparator = u',';
}

std::u16string toLine(const KeyRecord& record) {
  std::u16string line = runtime::toText(record.KeyIndex);
  for (const std::u16string& field :
       {record.ProductId, record.Caption, runtime::toText(record.BackColour),
        runtime::toText(record.FontColour)}) {
    line += kSeparator;
    line += field;
  }
  return line;
}

KeyLine::KeyLine(std::u16string_view line) : fields_(runtime::split(line, kSeparator)) {}

std::int32_t KeyLine::BackColour() const {
  return runtime::toLong(field(3));
}

const std::u16string& KeyLine::field(std::size_t number) const {
  if (number >= fields_.size())
    throw runtime::RunTimeError(runtime::ErrorNumber::SubscriptOutOfRange);
  return fields_[number];
}

}  // namespace layoutdata
