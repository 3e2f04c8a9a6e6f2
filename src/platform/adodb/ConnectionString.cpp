#include "platform/adodb/ConnectionString.h"

#include <algorithm>
#include <utility>

#include "platform/runtime/Text.h"

namespace ADODB {
namespace {

/// Reads a value and moves `position` past its semicolon.
std::u16string readValue(std::u16string_view text, std::size_t& place) {
  place = std::min(text.find_first_not_of(u' ', place), text.size());
  const char16_t quote = place < text.size() ? text[place] : u'\0';
  if (quote != u'"' && quote != u'\'') {
    const std::size_t end = std::min(text.find(u';', place), text.size());
    std::u16string value = runtime::trim(text.substr(place, end - place));
    place = end + 1;
    return value;
  }
  std::u16string value;
  for (++place; place < text.size(); ++place) {
    if (text[place] == quote) {
      if (place + 1 == text.size() || text[place + 1] != quote) break;
      ++place;
    }
    value += text[place];
  }
  const std::size_t end = std::min(text.find(u';', place), text.size());
  place = end + 1;
  return value;
}

}  // namespace

ConnectionString::ConnectionString(std::u16string_view text) {
  for (std::size_t place = 0; place < text.size();) {
    const std::size_t equals = text.find(u'=', place);
    if (equals == std::u16string_view::npos) return;
    const std::u16string name =
        runtime::lowerCase(runtime::trim(text.substr(place, equals - place)));
    place = equals + 1;
    std::u16string value = readValue(text, place);
    if (name == u"provider")
      provider = std::move(value);
    else if (name == u"data source")
      dataSource = std::move(value);
    else if (name == u"jet oledb:database password")
      databasePassword = std::move(value);
  }
}

}  // namespace ADODB
