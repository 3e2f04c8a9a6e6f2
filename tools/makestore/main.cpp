// makestore: writes a new store database.

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "makestore/CommandLine.h"
#include "makestore/ShopStore.h"

int main(int count, char** words) {
  try {
    const makestore::Request request =
        makestore::parseCommandLine(std::vector<std::string>(words + 1, words + count));
    if (request.help) {
      std::cout << makestore::usage();
      return 0;
    }
    makestore::shopStore(request.options).write(request.output);
    return 0;
  } catch (const makestore::UsageError& error) {
    std::cerr << "makestore: " << error.what() << "; --help lists the options\n";
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "makestore: " << error.what() << '\n';
    return 1;
  }
}
