#include "platform/jet/StoreFiles.h"

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <stdexcept>

#include "makestore/ShopStore.h"
#include "platform/jet/engine/ObjectCatalog.h"
#include "platform/jet/engine/Pager.h"
#include "platform/runtime/CodePage.h"

namespace jettest {
namespace fs = std::filesystem;
namespace {

bool isDatabase(const fs::path& file) {
  const std::string ending = file.extension();
  return ending == ".mdb" || ending == ".MDB";
}

/// The databases in a folder and the folders below it, in the order of their paths.
std::vector<StoreFile> databasesBelow(const fs::path& folder, const std::u16string& password) {
  std::vector<StoreFile> files;
  for (const fs::directory_entry& file : fs::recursive_directory_iterator(folder))
    if (isDatabase(file.path())) files.push_back({file.path(), password});
  std::ranges::sort(files, {}, &StoreFile::path);
  return files;
}

/// Stores of the older generation, and a large one with structures that no reference store has.
std::vector<StoreFile> madeStores() {
  static const Scratch scratch;
  static const std::vector<StoreFile> files = [] {
    makestore::ShopOptions plain;
    plain.version = jet::Version::Jet3;
    plain.moved = {3, 5, 7, 140};
    makestore::ShopOptions cafe = makestore::cafeShop();
    cafe.version = jet::Version::Jet3;
    cafe.encodingKey = 0x1234567;
    cafe.packedIndexes = true;
    makestore::ShopOptions large;
    large.slots = 2600;
    large.products = 2500;
    large.referenceMaps = true;
    large.barcodes = makestore::Barcodes::Mixed;
    std::vector<StoreFile> made;
    for (const auto& [name, options] :
         {std::pair{"jet3.mdb", plain}, {"jet3-encoded.mdb", cafe}, {"large.mdb", large}}) {
      made.push_back({scratch.folder() / name, options.password});
      makestore::shopStore(options).write(made.back().path);
    }
    return made;
  }();
  return files;
}

}  // namespace

std::vector<StoreFile> referenceStores() {
  return databasesBelow(REFERENCE_STORES, kStorePassword);
}

StoreFile referenceStore(std::string_view name) {
  for (const StoreFile& store : referenceStores())
    if (store.path.parent_path().filename() == name) return store;
  throw std::runtime_error("no reference store " + std::string(name));
}

bool areRealFiles() {
  return std::getenv("STORE_FILES") != nullptr;
}

std::vector<StoreFile> filesOfAllKinds() {
  if (areRealFiles()) return databasesBelow(std::getenv("STORE_FILES"), u"");
  std::vector<StoreFile> files = referenceStores();
  for (const StoreFile& store : madeStores()) files.push_back(store);
  return files;
}

Scratch::Scratch() {
  const fs::path memory = "/dev/shm";
  std::string pattern =
      ((fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "storeXXXXXX");
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch folder");
  folder_ = pattern;
}

Scratch::~Scratch() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

fs::path Scratch::copy(const fs::path& file) const {
  const fs::path target = folder_ / file.filename();
  fs::copy_file(file, target, fs::copy_options::overwrite_existing);
  fs::permissions(target, fs::perms::owner_write, fs::perm_options::add);
  return target;
}

std::string outputOf(const std::string& command, int* status) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("no command: " + command);
  std::array<char, 65536> part{};
  std::size_t count = 0;
  while ((count = fread(part.data(), 1, part.size(), pipe)) > 0) output.append(part.data(), count);
  const int ended = pclose(pipe);
  if (status != nullptr) *status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
  return output;
}

std::string checkerOutput(const std::string& options, const fs::path& file, int* status) {
  return outputOf("/usr/bin/python3 " STORECHECK " " + options + " '" + file.string() + "' 2>&1",
                  status);
}

std::string checkerVerdict(const fs::path& file) {
  std::string verdict = checkerOutput("", file);
  while (!verdict.empty() && verdict.back() == '\n') verdict.pop_back();
  return verdict;
}

std::map<fs::path, std::vector<std::string>> checkerLines(const std::string& options,
                                                          const std::vector<fs::path>& files) {
  // With a second file each line has its file's name.
  std::string command = "/usr/bin/python3 " STORECHECK " " + options + " /dev/null";
  for (const fs::path& file : files) command += " '" + file.string() + "'";
  std::map<fs::path, std::vector<std::string>> found;
  for (const std::string& line : split(outputOf(command + " 2>&1"), '\n')) {
    const std::size_t colon = line.find(": ");
    if (colon != std::string::npos) found[line.substr(0, colon)].push_back(line.substr(colon + 2));
  }
  found.erase("/dev/null");
  return found;
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts{""};
  for (const char c : text) {
    if (c == separator)
      parts.emplace_back();
    else
      parts.back().push_back(c);
  }
  if (parts.back().empty()) parts.pop_back();
  return parts;
}

std::string printed(jet::RowId row) {
  return std::to_string(row.page.value()) + "/" + std::to_string(row.slot.value());
}

std::vector<jet::CatalogObject> objectsOf(const fs::path& file) {
  jet::Pager pager(file, u"the file");
  return jet::ObjectCatalog(pager).objects();
}

std::string lineOf(const jet::Row& row, const jet::Table& table) {
  std::string line;
  for (std::size_t i = 0; i < table.columns().size(); ++i)
    line.append(i > 0 ? "\t" : "").append(printed(row.value(jet::ColumnIndex(i))));
  return line;
}

std::vector<std::string> linesOf(const jet::Table& table) {
  std::vector<std::string> lines;
  const auto scan = table.scan();
  while (scan->next()) lines.push_back(lineOf(scan->row(), table));
  return lines;
}

std::vector<jet::RowId> rowIdsOf(const fs::path& file, std::u16string_view password,
                                 std::u16string_view table) {
  jet::Database database(file, u"the file", jet::Password{password});
  std::vector<jet::RowId> ids;
  const auto scan = tableNamed(database, table).scan();
  while (scan->next()) ids.push_back(scan->row().id());
  return ids;
}

std::vector<std::string> indexProblems(const jet::Table& table) {
  // Rows of one key are looked up together: there may be many.
  struct Group {
    jet::IndexRange range;
    std::set<jet::RowId> rows;
    bool hasNull = false;
  };
  struct Expected {
    std::map<std::string, Group> groups;
    std::size_t rows = 0;
  };
  std::vector<Expected> expected(table.indexes().size());
  const auto scan = table.scan();
  while (scan->next()) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const jet::Index& index = table.indexes()[i];
      if (!index.seekable) continue;
      jet::IndexRange range;
      std::string key;
      for (const jet::RowKey::Part& part : index.columns) {
        range.equal.push_back(scan->row().value(part.column));
        key += printed(range.equal.back()) + "\t";
      }
      if (index.ignoreNulls && std::ranges::all_of(range.equal, &runtime::Variant::isNull))
        continue;
      ++expected[i].rows;
      Group& group = expected[i].groups[key];
      group.hasNull = std::ranges::any_of(range.equal, &runtime::Variant::isNull);
      group.range = std::move(range);
      group.rows.insert(scan->row().id());
    }
  }
  std::vector<std::string> problems;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const jet::Index& index = table.indexes()[i];
    if (!index.seekable) continue;
    const std::string name = narrow(table.name()) + "." + narrow(index.name);
    for (auto& [key, group] : expected[i].groups) {
      const auto walk = table.walk(jet::IndexNumber(i), group.range);
      std::size_t found = 0;
      for (; walk->next(); ++found) group.rows.erase(walk->row().id());
      if (index.unique && !group.hasNull && found > 1)
        problems.push_back(name + ": several rows are found by " + key);
      for (const jet::RowId& missing : group.rows)
        problems.push_back(name + ": row " + printed(missing) + " is not found");
    }
    std::size_t walked = 0;
    const auto walk = table.walk(jet::IndexNumber(i), {});
    while (walk->next()) ++walked;
    if (walked != expected[i].rows)
      problems.push_back(name + ": a walk returns " + std::to_string(walked) + " of " +
                         std::to_string(expected[i].rows) + " rows");
  }
  return problems;
}

const jet::Table& tableNamed(jet::Database& database, std::u16string_view name) {
  const auto object = database.find(name);
  if (!object) throw std::runtime_error("no table " + narrow(name));
  return database.table(*object);
}

void update(jet::Database& database, const jet::Table& table, jet::RowId row,
            std::span<const jet::ColumnValue> values, std::span<const jet::ColumnValue> asRead) {
  jet::RowChange change{.table = table.identity(), .row = row, .values = {}, .asRead = {}};
  for (const jet::ColumnValue& each : values)
    change.values.push_back({table.identity(each.column), each.value});
  for (const jet::ColumnValue& each : asRead)
    change.asRead.push_back({table.identity(each.column), each.value});
  database.update(change, [](const auto&, const auto&) { return true; });
}

void readEverything(const fs::path& file, std::u16string_view password) {
  jet::Database database(file, u"the file", jet::Password{password});
  for (const jet::CatalogObject& object : objectsOf(file)) {
    if (object.kind == jet::ObjectKind::Query) database.queryRows(object);
    if (object.kind != jet::ObjectKind::Table) continue;
    database.find(object.name);
    const jet::Table& table = database.table(object);
    linesOf(table);
    for (std::uint32_t i = 0; i < table.indexes().size(); ++i) {
      const auto walk = table.walk(jet::IndexNumber(i), {});
      while (walk->next()) {
      }
    }
  }
}

std::string narrow(std::u16string_view text) {
  return runtime::toUtf8(text);
}
std::u16string wide(std::string_view text) {
  return runtime::fromUtf8(text);
}

}  // namespace jettest
