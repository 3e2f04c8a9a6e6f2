// Measures the store database: reading, against a native database with the same rows and against an
// independent exporter; adding a product, against adding one to a small store.
//
//   store_bench [FOLDER]       folder for the stores, by default the temporary folder

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

#include "ChildProcess.h"
#include "Folder.h"
#include "Measurement.h"
#include "NativeStore.h"
#include "StoreSession.h"
#include "layoutdata/Statements.h"
#include "makestore/ShopStore.h"
#include "platform/files/ProgramFolder.h"
#include "platform/files/seam/FaultSeam.h"
#include "platform/runtime/CodePage.h"

namespace {

namespace fs = std::filesystem;
namespace statements = layoutdata::statements;
using bench::compare;

constexpr int kSlots = 50000;
constexpr int kProducts = 40000;
constexpr int kFewSlots = 5000;
/// Number of free slots, spread over all ids, in the stores to which products are added.
constexpr int kFreeSlots = 250;
constexpr int kAdds = 100;
constexpr int kCountedAdds = 100;
constexpr double kMostPages = 24;
constexpr double kMostRepeatedReads = 20;
constexpr const char* kItemsNative =
    "SELECT ID,DESCRIPTION,barcode from qrySalesitems where description <> '' order by description";
/// Options of a child process. Reads all items of the store and prints the process's peak memory.
constexpr const char* kPeakMemoryOption = "--read-items";
/// Reads the items of the small shop in the process's first session and prints the seconds.
constexpr const char* kFirstSessionOption = "--first-session";
/// The same with the native file.
constexpr const char* kFirstNativeOption = "--first-native";
constexpr int kSmallShop = 2000;

/// The folder of the stores, as a shop has them in its program folder. A session finds the names
/// below the program folder by listing it, and names above it need no look-up.
constexpr const char* kStores = "Stores/Demo";

void setProgramFolder(const fs::path& folder) {
  files::setProgramFile(folder / "keystrand");
}

void expectRows(int found, int wanted) {
  if (found != wanted)
    throw std::runtime_error(std::to_string(found) + " rows instead of " + std::to_string(wanted));
}

void exportStock(const fs::path& store) {
  const std::string command = "mdb-export '" + store.string() + "' tblStock >/dev/null";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("mdb-export failed");
}

constexpr const char16_t* kItemFields[] = {u"barcode", u"Description", u"id"};
constexpr const char* kNativeItemFields[] = {"barcode", "Description", "id"};

void readItems(const fs::path& store, int products) {
  expectRows(bench::readStoreFields(store, statements::kItems, kItemFields), products);
}

void readNativeItems(const fs::path& native, int products) {
  const auto use = [](std::span<const std::u16string>) {};
  expectRows(bench::readNativeFields(native, kItemsNative, kNativeItemFields, use), products);
}

void measureReading(const fs::path& store, const fs::path& native) {
  const auto items = [&] { readItems(store, kProducts); };
  compare("all items of 50,000 slots by name, against mdb-export of tblStock", 0.2, 9, items,
          [&] { exportStock(store); });
  compare("all items of 50,000 slots by name, against native SQLite", 2.5, 9, items,
          [&] { readNativeItems(native, kProducts); });

  const auto compareWithNative = [&](const std::string& name, std::u16string_view statement,
                                     int rows) {
    const std::string text = runtime::toUtf8(statement);
    compare(
        name + ", against native SQLite", 1.5, 200,
        [&] { expectRows(bench::readStore(store, statement), rows); },
        [&] { expectRows(bench::readNative(native, text), rows); });
  };
  std::u16string level(statements::kStockHead);
  compareWithNative(
      "slots of level 1 of 50,000",
      level.append(statements::kLevels.front().condition).append(statements::kStockTail), 63);
  compareWithNative("flags of one product of 50,000", std::u16string(statements::kFlags) + u"30000",
                    1);
  std::u16string department(statements::kDepartmentByNameHead);
  compareWithNative("a department by its name, 50,000 slots",
                    department.append(u"Bakery").append(statements::kDepartmentByNameTail), 1);
}

void measureFirstSession(const fs::path& store, const fs::path& native) {
  bench::compareParts(
      "first session of a process on 2,000 products, against native SQLite's first", 2, 60,
      [&] { return bench::numberPrintedByChild(kFirstSessionOption, store); },
      [&] { return bench::numberPrintedByChild(kFirstNativeOption, native); });
}

/// Reads all items in a child process, which prints its own peak memory: the system's count for a
/// forked child would begin with the memory of this process.
void measureMemory(const fs::path& store) {
  const std::string name = "peak memory for all items of 50,000 slots, against the file's size";
  try {
    const double peak = bench::numberPrintedByChild(kPeakMemoryOption, store);
    const auto size = static_cast<double>(fs::file_size(store));
    bench::printRow(name, bench::megabytes(peak), bench::megabytes(size), peak / size, 2);
  } catch (const std::exception& error) {
    bench::printFailure(name, 2, error.what());
  }
}

void writeStoreToFill(const fs::path& path, int slots) {
  makestore::ShopOptions options;
  options.slots = slots;
  options.free.emplace();
  for (int i = 1; i <= kFreeSlots; ++i) options.free->insert(i * (slots / kFreeSlots));
  makestore::shopStore(options).write(path);
}

/// Adds one product; the number varies the name's first letter, so that the names spread over the
/// index.
void addNext(const fs::path& store, int& number) {
  const std::string name =
      "abcdefghijklmnopqrstuvwxyz"[number * 7 % 26] + std::string("dded ") + std::to_string(number);
  ++number;
  bench::addProduct(store, runtime::fromUtf8(name));
}

/// Number of file operations of this kind that `work` performs.
int countSteps(files::FileStep::Kind kind, const std::function<void()>& work) {
  int steps = 0;
  files::setFaultSeam([&](const files::FileStep& step) {
    if (step.kind == kind) ++steps;
    return step.size;
  });
  work();
  files::setFaultSeam({});
  return steps;
}

/// Prints a row that compares a number of pages with its limit.
void printPages(const std::string& name, double limit, const std::function<int()>& count) {
  try {
    const int pages = count();
    bench::printRow(name, std::to_string(pages), std::to_string(static_cast<int>(limit)),
                    pages / limit, 1);
  } catch (const std::exception& error) {
    files::setFaultSeam({});
    bench::printFailure(name, 1, error.what());
  }
}

void measureAdding(const fs::path& large, const fs::path& small) {
  writeStoreToFill(large, kSlots);
  writeStoreToFill(small, kFewSlots);
  int inLarge = 0;
  int inSmall = 0;
  compare(
      "adding a product at 50,000 slots, against 5,000", 2, kAdds, [&] { addNext(large, inLarge); },
      [&] { addNext(small, inSmall); });

  printPages("pages written to add a product at 50,000 slots, against the limit", kMostPages, [&] {
    int most = 0;
    for (int i = 0; i < kCountedAdds; ++i)
      most = std::max(most,
                      countSteps(files::FileStep::Kind::Write, [&] { addNext(large, inLarge); }));
    return most;
  });
}

void measureRepeating(const fs::path& store) {
  printPages("pages read by an update that changes nothing, against the limit", kMostRepeatedReads,
             [&] {
               constexpr auto kRead = files::FileStep::Kind::Read;
               return countSteps(kRead, [&] { bench::rewriteFlags(store, kProducts); }) -
                      countSteps(kRead, [&] { bench::readFlags(store, kProducts); });
             });
}

/// Runs as the child process for this option and prints the number that the parent reads.
void runChild(const std::string& option, const fs::path& file) {
  setProgramFolder(file.parent_path().parent_path().parent_path());
  if (option == kPeakMemoryOption) {
    expectRows(bench::readStore(file, statements::kItems), kProducts);
    std::cout << static_cast<long>(bench::peakMemoryOf("self")) << '\n';
    return;
  }
  std::cout << bench::secondsOf([&] {
    option == kFirstSessionOption ? readItems(file, kSmallShop) : readNativeItems(file, kSmallShop);
  }) << '\n';
}

void writeShop(const fs::path& folder, const std::string& name, int slots, int products) {
  makestore::ShopOptions options;
  options.slots = slots;
  options.products = products;
  makestore::StoreBuilder store = makestore::shopStore(options);
  store.write(folder / (name + ".mdb"));
  bench::writeNative(folder / (name + ".db"), store);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count == 3) {
      runChild(arguments[1], arguments[2]);
      return 0;
    }
    const bench::Folder folder(count > 1 ? fs::path(arguments[1]) : fs::temp_directory_path());
    setProgramFolder(folder.path());
    const fs::path stores = folder / kStores;
    fs::create_directories(stores);
    writeShop(stores, "store", kSlots, kProducts);
    writeShop(stores, "shop", kSmallShop, kSmallShop);
    measureReading(stores / "store.mdb", stores / "store.db");
    measureFirstSession(stores / "shop.mdb", stores / "shop.db");
    measureMemory(stores / "store.mdb");
    measureRepeating(stores / "store.mdb");
    measureAdding(stores / "large.mdb", stores / "small.mdb");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "store_bench: " << error.what() << '\n';
    return 1;
  }
}
