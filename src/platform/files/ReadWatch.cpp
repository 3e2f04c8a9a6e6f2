#include "platform/files/ReadWatch.h"

#include <utility>

namespace files {
namespace {

std::function<void()>& watcher() {
  static std::function<void()> call;
  return call;
}

}  // namespace

void onRead(std::function<void()> call) {
  watcher() = std::move(call);
}

void callReadWatch() {
  if (watcher()) watcher()();
}

}  // namespace files
