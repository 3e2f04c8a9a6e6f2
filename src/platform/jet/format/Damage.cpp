#include "platform/jet/format/Damage.h"

#include <string>

#include "platform/runtime/Conversion.h"
#include "platform/runtime/ProviderError.h"

namespace jet {
namespace {

std::u16string whereabouts(const Location& location) {
  std::u16string text;
  if (!location.table.empty()) text.append(u"table '").append(location.table).append(u"', ");
  return text.append(u"page ").append(runtime::toText(location.page.value()));
}

}  // namespace

void raiseDamaged(const Location& location, std::u16string_view how) {
  std::u16string text = u"The database '";
  text.append(location.file).append(u"' is damaged (").append(whereabouts(location)).append(u"): ");
  throw runtime::generalError(text.append(how).append(u"."));
}

void raiseDamaged(const Location& location, std::u16string_view how, const Misfit& misfit) {
  using runtime::toText;
  std::u16string text(how);
  text += u" (" + toText(misfit.size) + u" bytes at offset " + toText(misfit.offset) + u" of " +
          toText(misfit.available) + u")";
  raiseDamaged(location, text);
}

void raiseUnsupported(const Location& location, std::u16string_view why) {
  std::u16string text = u"Cannot update '";
  text.append(location.file).append(u"' (").append(whereabouts(location)).append(u"): ");
  throw runtime::generalError(text.append(why).append(u"."));
}

}  // namespace jet
