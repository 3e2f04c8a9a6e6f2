#include "platform/adodb/ConnectionString.h"

#include <algorithm>
#include <utility>

#include "platform/runtime/Text.h"

namespace ADODB {
namespace {

/// Reads a value and moves `position` past its semicolon.
std::u16string readValue(std::u16string_view text, std::size_t& position) {
  position = std::min(text.find_first_not_of(u' ', position), text.size());
  const char16_t quote = position < text.size() ? text[position] : u'\0';
  if (quote != u'"' && quote != u'\'') {
    const std::size_t end = std::min(text.find(u';', position), text.size());
    std::u16string value = runtime::trim(text.substr(position, end - position));
    position = end + 1;
    return value;
  }
  std::u16string value;
  for (++position; position < text.size(); ++position) {
    if (text[position] == quote) {
      if (position + 1 == text.size() || text[position + 1] != quote) break;
      ++position;
    }
    value += text[position];
  }
  const std::size_t end = std::min(text.find(u';', position), text.size());
  position = end + 1;
  return value;
}

}  // namespace

ConnectionString::ConnectionString(std::u16string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t equals = text.find(u'=', position);
    if (equals == std::u16string_view::npos) return;
    const std::u16string name =
        runtime::lowerCase(runtime::trim(text.substr(position, equals - position)));
    position = equals + 1;
    std::u16string value = readValue(text, position);
    if (name == u"provider")
      provider = std::move(value);
    else if (name == u"data source")
      dataSource = std::move(value);
    else if (name == u"jet oledb:database password")
      databasePassword = std::move(value);
  }
}

}  // namespace ADODB
