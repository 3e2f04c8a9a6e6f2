#pragma once

#include "platform/runtime/RunTimeError.h"

namespace ADODB::error {

/// Each function returns one error of the session objects, to be thrown by the caller. Errors for
/// requests that the engine refuses come from `jet/format/EngineError.h` and
/// `jetsql/syntax/StatementError.h`.
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
