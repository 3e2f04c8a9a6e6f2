#pragma once

#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/jet/engine/Database.h"
#include "storesql/PrintedValue.h"

namespace jettest {

/// Password of the reference stores.
inline constexpr char16_t kStorePassword[] = u"w7rt3q8814Z";

/// A database file, and the password that opens it.
struct StoreFile {
  std::filesystem::path path;
  std::u16string password;
};
/// The reference stores of tests/data.
std::vector<StoreFile> referenceStores();
/// The reference store in this folder of tests/data.
StoreFile referenceStore(std::string_view name);
/// Files of both generations: the reference stores and generated ones. A long run uses real files
/// instead: the environment variable STORE_FILES names their folder; none has a password.
std::vector<StoreFile> filesOfAllKinds();
/// True in a long run over real files.
bool areRealFiles();

/// A folder that is deleted with the object. It is in memory where the machine has a memory file
/// system, so that syncs cost nothing.
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

/// The standard output of a command; `status` receives its exit status.
std::string outputOf(const std::string& command, int* status = nullptr);
/// The output of storecheck for a file: "sound", or its problems, one per line.
std::string checkerVerdict(const std::filesystem::path& file);
/// The output of storecheck for a file with these options; `status` receives its exit status.
std::string checkerOutput(const std::string& options, const std::filesystem::path& file,
                          int* status = nullptr);
/// The lines of that output for each of these files. One run for many files is much faster.
std::map<std::filesystem::path, std::vector<std::string>> checkerLines(
    const std::string& options, const std::vector<std::filesystem::path>& files);

std::vector<std::string> split(const std::string& text, char separator);

using storesql::printed;  // as the EXPECTED files and storecheck print a value
/// A row's id as the checker prints it: page/slot.
std::string printed(jet::RowId row);

/// All tables, saved queries and linked tables of a file, in the order of its object list.
std::vector<jet::CatalogObject> objectsOf(const std::filesystem::path& file);

/// The values of a row, with tabs between them.
std::string lineOf(const jet::Row& row, const jet::Table& table);
/// The ids of all rows of a table, in the order of a scan.
std::vector<jet::RowId> rowIdsOf(const std::filesystem::path& file, std::u16string_view password,
                                 std::u16string_view table);
/// All rows of a table by a scan, each as one line with tabs between the columns.
std::vector<std::string> linesOf(const jet::Table& table);
/// The problems of a table's indexes that our own walks and lookups find.
std::vector<std::string> indexProblems(const jet::Table& table);
/// The table of that name. Raises std::runtime_error where there is none.
const jet::Table& tableNamed(jet::Database& database, std::u16string_view name);

/// Updates one row; columns are named by their indexes in `table`, which is invalid afterwards.
/// `asRead` has the values that the row must still have. No validation rule is tested.
void update(jet::Database& database, const jet::Table& table, jet::RowId row,
            std::span<const jet::ColumnValue> values,
            std::span<const jet::ColumnValue> asRead = {});

/// Reads all content of a database: every table by a scan and by each index, every saved query.
void readEverything(const std::filesystem::path& file, std::u16string_view password);

std::string narrow(std::u16string_view text);
std::u16string wide(std::string_view text);

}  // namespace jettest
