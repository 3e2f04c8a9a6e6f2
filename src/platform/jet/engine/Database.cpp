#include "platform/jet/engine/Database.h"

#include <map>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/engine/RowUpdate.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/runtime/RunTimeError.h"

namespace jet {
namespace {

constexpr std::int32_t kWrongPassword = -2147217843;

}  // namespace

struct Database::Session {
  Session(const std::filesystem::path& file, std::u16string_view shownPath)
      : pager(file, shownPath), catalog(pager) {}

  Pager pager;
  Catalog catalog;
  std::map<std::uint32_t, std::unique_ptr<Table>> tables;  ///< by definition page
};

Database::Database(const std::filesystem::path& file, std::u16string_view shownPath,
                   std::u16string_view password)
    : session_(std::make_unique<Session>(file, shownPath)) {
  if (session_->pager.header().password != password)
    throw runtime::RunTimeError(kWrongPassword, u"Not a valid password.");
}

Database::~Database() = default;

Version Database::version() const {
  return session_->pager.header().version;
}

TextOrder Database::textOrder() const {
  return textOrderOf(version());
}

bool Database::isReadOnly() const {
  return session_->pager.isReadOnly();
}

std::optional<CatalogObject> Database::find(std::u16string_view name) {
  return session_->catalog.find(name);
}

std::vector<CatalogObject> Database::objects() {
  return session_->catalog.objects();
}

const Table& Database::table(const CatalogObject& object) {
  const std::uint32_t page = object.definitionPage();
  std::unique_ptr<Table>& table = session_->tables[page];
  if (!table) table = std::make_unique<Table>(session_->pager, object.name, page);
  return *table;
}

std::vector<QueryRow> Database::queryRows(const CatalogObject& object) {
  return session_->catalog.queryRows(object.id);
}

void Database::update(const Table& table, RowId row, std::span<const ColumnValue> changes,
                      std::span<const ColumnValue> asRead) {
  Pager& pager = session_->pager;
  pager.beginUpdate();
  try {
    // The definition afresh: another program may have changed it since.
    const TableSource source(pager, table.name(), table.definitionPage());
    RowUpdate update(pager, session_->catalog, source, row);
    update.expect(asRead);
    update.run(changes);
  } catch (...) {
    pager.release();
    throw;
  }
  pager.endUpdate();
}

Reading::~Reading() {
  database_.session_->pager.release();
}

}  // namespace jet
