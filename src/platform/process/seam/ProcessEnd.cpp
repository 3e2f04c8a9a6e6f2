#include "platform/process/seam/ProcessEnd.h"

namespace process {

ProcessEnd& processEnd() {
  static ProcessEnd instance;
  return instance;
}

void resetEnded() {
  ProcessEnd& end = processEnd();
  end.ending = false;
  end.ended = false;
  end.loopExits.clear();
}

}  // namespace process
