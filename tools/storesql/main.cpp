// Runs one statement of the store's dialect on a store database, as the screens do, and prints the
// rows; or writes values into the first row; or takes many such steps from a file.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "Step.h"
#include "layoutdata/Statements.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"

namespace {

constexpr int kUsageStatus = 2;

constexpr const char* kUsage =
    "storesql [--password TEXT] DATABASE STATEMENT\n"
    "storesql [--password TEXT] --update COLUMN=TEXT... DATABASE STATEMENT\n"
    "storesql [--password TEXT] --script FILE DATABASE\n";

struct Arguments {
  storesql::Store store{"", runtime::toUtf8(layoutdata::statements::kPassword)};
  std::optional<std::string> script;
  bool updates = false;
  std::vector<std::string> plain;
};

std::optional<Arguments> parse(const std::vector<std::string>& words) {
  Arguments arguments;
  bool optionsEnd = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (optionsEnd || !word.starts_with("--")) {
      arguments.plain.push_back(word);
    } else if (word == "--") {
      optionsEnd = true;
    } else if (word == "--update") {
      arguments.updates = true;
    } else if ((word == "--password" || word == "--script") && i + 1 < words.size()) {
      (word == "--script" ? arguments.script.emplace() : arguments.store.password) = words[i + 1];
      ++i;
    } else {
      return std::nullopt;
    }
  }
  const std::size_t count = arguments.plain.size();
  const bool fits = arguments.script ? count == 1 && !arguments.updates
                                     : (arguments.updates ? count >= 3 : count == 2);
  if (!fits) return std::nullopt;
  return arguments;
}

std::string described(const runtime::RunTimeError& failure) {
  return std::to_string(failure.number()) + ": " + runtime::toUtf8(failure.text());
}

/// Takes the script's steps until one fails; gives the exit status.
int runScript(const Arguments& arguments) {
  std::ifstream script(*arguments.script);
  if (!script) throw runtime::RunTimeError(runtime::ErrorNumber::FileNotFound);
  int done = 0;
  int status = EXIT_SUCCESS;
  std::string line;
  for (int number = 1; std::getline(script, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty()) continue;
    try {
      std::ostringstream unprinted;
      storesql::run(arguments.store, storesql::stepOfLine(line), unprinted);
      ++done;
    } catch (const runtime::RunTimeError& failure) {
      std::cerr << "line " << number << ": " << described(failure) << '\n';
      status = EXIT_FAILURE;
      break;
    }
  }
  std::cout << done << '\n';
  return status;
}

int run(Arguments arguments) {
  if (arguments.script) {
    arguments.store.path = arguments.plain[0];
    return runScript(arguments);
  }
  storesql::Step step;
  step.statement = runtime::fromUtf8(arguments.plain.back());
  arguments.plain.pop_back();
  arguments.store.path = arguments.plain.back();
  arguments.plain.pop_back();
  for (const std::string& each : arguments.plain) {
    step.values.push_back(storesql::assignment(each));
  }
  storesql::run(arguments.store, step, std::cout);
  return EXIT_SUCCESS;
}

}  // namespace

int main(int count, char** words) {
  std::ios::sync_with_stdio(false);
  const auto arguments = parse({words + 1, words + count});
  if (!arguments) {
    std::cerr << kUsage;
    return kUsageStatus;
  }
  try {
    return run(*arguments);
  } catch (const runtime::RunTimeError& failure) {
    std::cout.flush();
    std::cerr << described(failure) << '\n';
  } catch (const std::exception& failure) {
    std::cerr << static_cast<int>(runtime::ErrorNumber::InternalError) << ": " << failure.what()
              << '\n';
  }
  return EXIT_FAILURE;
}
