#include "layoutdata/KeyRecord.h"

#include <utility>

#include "platform/runtime/Conversion.h"
#include "platform/runtime/RunTimeError.h"

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

KeyLine::KeyLine(std::u16string line) : line_(std::move(line)) {}

std::int32_t KeyLine::BackColour() const {
  return runtime::toLong(field(3));
}

std::u16string_view KeyLine::field(std::size_t number) const {
  std::u16string_view rest = line_;
  std::size_t end = rest.find(kSeparator);
  for (; number > 0 && end != rest.npos; --number) {
    rest.remove_prefix(end + 1);
    end = rest.find(kSeparator);
  }
  if (number > 0 || line_.empty())
    throw runtime::RunTimeError(runtime::ErrorNumber::SubscriptOutOfRange);
  return rest.substr(0, end);
}

}  // namespace layoutdata
