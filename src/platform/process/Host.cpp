#include "platform/process/Host.h"

#include "platform/runtime/RunTimeError.h"

namespace process {
namespace {

Host*& currentHost() {
  static Host* host = nullptr;
  return host;
}

}  // namespace

void setHost(Host& host) {
  currentHost() = &host;
}

Host& host() {
  if (currentHost() == nullptr) throw runtime::RunTimeError(runtime::ErrorNumber::InternalError);
  return *currentHost();
}

}  // namespace process
