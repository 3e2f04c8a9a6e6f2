#pragma once

#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/jet/engine/Database.h"

namespace jettest {

/// Password of the reference stores.
inline constexpr char16_t kStorePassword[] = u"w7rt3q8814Z";

/// A reference database file, and the password that opens it.
struct StoreFile {
  std::filesystem::path path;
  std::u16string password;
};
/// The reference stores of tests/data.
std::vector<StoreFile> referenceStores();
/// The reference store in this folder of tests/data.
StoreFile referenceStore(std::string_view name);
/// Files of both generations: the reference stores and made ones. A long run replaces them by real
/// files: the environment variable STORE_FILES names their folder; none has a password.
std::vector<StoreFile> filesOfAllKinds();
/// True in a long run over real files.
bool areRealFiles();

/// A folder that goes with the object. It lies in memory where the machine has such a place, so
/// that syncs cost nothing.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::filesystem::path& folder() const { return folder_; }
  /// A copy of the file in the folder.
  std::filesystem::path copy(const std::filesystem::path& file) const;

 private:
  std::filesystem::path folder_;
};

/// What a command printed to its standard output; its exit status goes to `status`.
std::string outputOf(const std::string& command, int* status = nullptr);
/// What storecheck says about a file: "sound", or its problems, one a line.
std::string checkerVerdict(const std::filesystem::path& file);
/// The same for many files at once, which is much quicker; by file, one problem a line.
std::map<std::filesystem::path, std::vector<std::string>> checkerVerdicts(
    const std::vector<std::filesystem::path>& files);
/// What storecheck prints for a file with these options; its exit status goes to `status`.
std::string checkerOutput(const std::string& options, const std::filesystem::path& file,
                          int* status = nullptr);

std::vector<std::string> split(const std::string& text, char separator);

/// A value as the reference tables print it: null as \N, yes/no as 1 or 0, four decimals of a
/// Currency, the shortest decimal of a Double.
std::string printed(const runtime::Variant& value);

/// All rows of a table by a scan, each as one line with tabs between the columns.
std::vector<std::string> linesOf(const jet::Table& table);
/// Opens the file and gives the table of that name.
const jet::Table& tableNamed(jet::Database& database, std::u16string_view name);

/// Updates one row; columns are named by their positions in `table`, which is gone after it. No
/// validation rule refuses anything.
void update(jet::Database& database, const jet::Table& table, jet::RowId row,
            std::span<const jet::ColumnValue> values,
            std::span<const jet::ColumnValue> asRead = {});

/// Reads whatever a database holds: every table by a scan and by each index, every saved query.
void readEverything(const std::filesystem::path& file, std::u16string_view password);

std::string narrow(std::u16string_view text);
std::u16string wide(std::string_view text);

}  // namespace jettest
