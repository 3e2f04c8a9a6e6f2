// Runs one statement of the store's dialect on a store database, as the screens do, and prints the
// rows; or writes values into the first row; or runs many such steps from a file; or prints how
// SQLite runs the statement.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "layoutdata/Statements.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"
#include "storesql/Step.h"

namespace {

constexpr int kUsageStatus = 2;

constexpr const char* kUsage =
    "storesql [--password TEXT] DATABASE STATEMENT\n"
    "storesql [--password TEXT] --update COLUMN=TEXT... DATABASE STATEMENT\n"
    "storesql [--password TEXT] --script FILE DATABASE\n"
    "storesql [--password TEXT] --plan DATABASE STATEMENT\n";

enum class Task { Read, Update, Script, Plan };

struct Arguments {
  storesql::Store store{"", runtime::toUtf8(layoutdata::statements::kPassword)};
  Task task = Task::Read;
  std::string script;
  std::vector<std::string> operands;
};

/// True where a task takes `count` operands.
bool fits(Task task, std::size_t count) {
  switch (task) {
    case Task::Read:
    case Task::Plan:
      return count == 2;
    case Task::Update:
      return count >= 3;
    case Task::Script:
      return count == 1;
  }
  return false;
}

std::optional<Arguments> parse(const std::vector<std::string>& words) {
  Arguments arguments;
  bool optionsEnd = false;
  bool hasTwoTasks = false;
  const auto choose = [&](Task task) {
    if (arguments.task != Task::Read && arguments.task != task) hasTwoTasks = true;
    arguments.task = task;
  };
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (optionsEnd || !word.starts_with("--")) {
      arguments.operands.push_back(word);
    } else if (word == "--") {
      optionsEnd = true;
    } else if (word == "--update") {
      choose(Task::Update);
    } else if (word == "--plan") {
      choose(Task::Plan);
    } else if (word == "--password" && i + 1 < words.size()) {
      arguments.store.password = words[++i];
    } else if (word == "--script" && i + 1 < words.size()) {
      choose(Task::Script);
      arguments.script = words[++i];
    } else {
      return std::nullopt;
    }
  }
  if (hasTwoTasks || !fits(arguments.task, arguments.operands.size())) return std::nullopt;
  return arguments;
}

std::string described(const runtime::RunTimeError& failure) {
  return std::to_string(failure.number()) + ": " + runtime::toUtf8(failure.text());
}

/// Runs the script's steps until one fails; returns the exit status.
int runScript(const Arguments& arguments) {
  std::ifstream script(arguments.script);
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
  if (arguments.task == Task::Script) {
    arguments.store.path = arguments.operands[0];
    return runScript(arguments);
  }
  storesql::Step step;
  step.statement = runtime::fromUtf8(arguments.operands.back());
  arguments.operands.pop_back();
  arguments.store.path = arguments.operands.back();
  arguments.operands.pop_back();
  if (arguments.task == Task::Plan) {
    storesql::explain(arguments.store, step.statement, std::cout);
    return EXIT_SUCCESS;
  }
  for (const std::string& each : arguments.operands) {
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
