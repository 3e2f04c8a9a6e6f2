#pragma once

#include <filesystem>
#include <string>

#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"

namespace jettest {

/// Makes a change, and checks every state in which a power cut may leave the file: with all writes
/// before a sync and any subset of those between it and the next. (A killed process also leaves one
/// of these states.) Page writes are atomic here: torn pages are not tested. In each state
/// every row must have its old or its new values and be found by its key in every index, other
/// changes must work, and repeating the change must leave the file sound; otherwise the running
/// test fails. Returns the number of states.
int cutEverywhere(const Scratch& scratch, const std::filesystem::path& before,
                  const std::u16string& password, const Change& change);

}  // namespace jettest
