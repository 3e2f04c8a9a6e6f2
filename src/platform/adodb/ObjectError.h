#pragma once

#include "platform/runtime/RunTimeError.h"

namespace ADODB::error {

/// The session objects' own errors, each to be thrown: number and words. The provider's errors for
/// what the engine refuses come from below.
runtime::RunTimeError noCurrentRecord();
runtime::RunTimeError noSuchItem();
runtime::RunTimeError objectClosed();
runtime::RunTimeError objectOpen();
runtime::RunTimeError connectionClosed();
runtime::RunTimeError notUpdatable();
runtime::RunTimeError valueStaged();
runtime::RunTimeError noSuchProvider();
runtime::RunTimeError wrongArgument();

}  // namespace ADODB::error
