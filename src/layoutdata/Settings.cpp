#include "layoutdata/Settings.h"

#include "platform/files/ProgramFolder.h"

namespace layoutdata::settings {

std::u16string touchFile() {
  return files::programFolder().append(u"\\Posdata\\FastTouchButtons.ini");
}

std::u16string posFile() {
  return files::programFolder().append(u"\\Posdata\\Posconfig.ini");
}

}  // namespace layoutdata::settings
