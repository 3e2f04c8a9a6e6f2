#include "platform/files/seam/FaultSeam.h"

#include <algorithm>
#include <utility>

namespace files {
namespace {

FaultSeam& currentSeam() {
  static FaultSeam seam;
  return seam;
}

}  // namespace

void setFaultSeam(FaultSeam seam) {
  currentSeam() = std::move(seam);
}

std::size_t allowedBytes(const FileStep& step) {
  if (!currentSeam()) return step.size;
  return std::min(step.size, currentSeam()(step));
}

}  // namespace files
