#pragma once

#include <filesystem>
#include <string>

#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"

namespace jettest {

/// Makes a change on copies of the file and cuts it after each of its page writes: nothing may be
/// lost, other changes have to work, and the change made again has to leave the row clean. Fails
/// the running test otherwise. Gives the number of cuts.
int cutEverywhere(const Scratch& scratch, const std::filesystem::path& before,
                  const std::u16string& password, const Change& change);

}  // namespace jettest
