#include "editor/keygeometry.h"

#include "layoutdata/Settings.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdWriteINI.h"

namespace settings = layoutdata::settings;

namespace keygeometry {

namespace {

std::u16string Read(const settings::NumberSetting& setting) {
  return mdWriteINI::ReadINI(settings::touchFile(), settings::kButtons, setting.key,
                             setting.defaultValue);
}

}  // namespace

Settings ReadSettings() {
  Settings read;
  read.StartLeft = runtime::toLong(Read(settings::kStartLeft));
  read.StartTop = runtime::toLong(Read(settings::kStartTop));
  read.rows = runtime::toInteger(Read(settings::kRows));
  read.Space = runtime::toInteger(Read(settings::kSpace));
  read.ButtonHeight = runtime::toInteger(Read(settings::kButtonHeight));
  read.ButtonWidth = runtime::toInteger(Read(settings::kButtonWidth));
  return read;
}

void Arrange(const Settings& from, std::int16_t keyCount,
             const std::function<void(std::int16_t key, const KeyPosition& position)>& apply) {
  runtime::Integer16 top = runtime::toInteger(from.StartTop);
  runtime::Integer16 left = runtime::toInteger(from.StartLeft);
  runtime::Integer16 count = from.rows;
  for (std::int16_t key = 0; key < keyCount; ++key) {
    apply(key, {.Top = top, .Left = left, .Height = from.ButtonHeight});
    if (count == 1) {
      top = runtime::toInteger(from.StartTop);
      left = left + from.ButtonWidth;
      left = left + from.Space;
      count = from.rows;
    } else {
      top = top - from.ButtonHeight;
      top = top - from.Space;
      count = count - runtime::Integer16(1);
    }
  }
}

}  // namespace keygeometry
