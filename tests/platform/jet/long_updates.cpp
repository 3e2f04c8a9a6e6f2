// Makes random changes on a copy of a database file, and checks the file after every round. Run by
// long_run.sh: long_updates FILE PASSWORD ROUNDS CHANGES_A_ROUND SEED

#include <cstdlib>
#include <iostream>

#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"

int main(int count, char** words) {
  if (count != 6) return 2;
  const jettest::Scratch scratch;
  const std::filesystem::path file = scratch.copy(words[1]);
  jettest::RandomUpdates updates(file, jettest::wide(words[2]),
                                 static_cast<std::uint32_t>(std::atoi(words[5])));
  for (int round = 0; round < std::atoi(words[3]); ++round) {
    std::vector<std::string> problems;
    try {
      updates.run(std::atoi(words[4]));
      problems = updates.problems();
    } catch (const std::exception& error) {
      problems.emplace_back(error.what());
    }
    for (const std::string& problem : problems) std::cout << problem << '\n';
    if (problems.empty()) continue;
    const std::filesystem::path kept = std::filesystem::temp_directory_path() / "long_updates.mdb";
    std::filesystem::copy_file(file, kept, std::filesystem::copy_options::overwrite_existing);
    std::cout << words[1] << ": unsound in round " << round << ", kept as " << kept << '\n';
    return 1;
  }
  std::cout << words[1] << ": " << updates.made() << " changes made";
  for (const auto& [number, times] : updates.refused())
    std::cout << ", " << times << " refused with " << number;
  std::cout << '\n';
  return 0;
}
