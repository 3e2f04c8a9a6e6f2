#pragma once

#include <filesystem>
#include <string>

#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"

namespace jettest {

/// Makes a change, and judges every state in which a power cut may leave the file: with all writes
/// up to a sync and any subset of those between it and the next. (A killed process leaves one of
/// these too.) A page write counts as one: torn pages are not tried. Every row has its old or its
/// new values and is found by its key in every index, other changes work, and the same change made
/// again leaves the file sound. Fails the running test otherwise. Returns the number of states.
int cutEverywhere(const Scratch& scratch, const std::filesystem::path& before,
                  const std::u16string& password, const Change& change);

}  // namespace jettest
