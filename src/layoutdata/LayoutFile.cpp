#include "layoutdata/LayoutFile.h"

#include "platform/files/ProgramFolder.h"
#include "platform/runtime/Conversion.h"

namespace layoutdata {

std::u16string levelFile(std::u16string_view literal, std::int16_t level) {
  return files::programFolder().append(literal).append(runtime::toText(level)).append(u".txt");
}

}  // namespace layoutdata
