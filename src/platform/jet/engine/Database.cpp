#include "platform/jet/engine/Database.h"

#include <map>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/engine/RowUpdate.h"
#include "platform/jet/format/EngineError.h"

namespace jet {

struct Database::Session {
  Session(const std::filesystem::path& file, std::u16string_view shownPath)
      : pager(file, shownPath), catalog(pager) {}

  /// Releases the lock, and with it everything that was read under it.
  void release() noexcept {
    tables.clear();
    catalog.forget();
    pager.release();
  }

  Pager pager;
  ObjectCatalog catalog;
  std::map<PageNumber, std::unique_ptr<Table>> tables;  ///< by definition page
};

/// Holds the exclusive lock from the first page that an update reads to its end.
class Database::Updating {
 public:
  explicit Updating(Session& session) : session_(session) {
    session_.release();
    session_.pager.lockForUpdate();
  }
  ~Updating() { session_.release(); }
  Updating(const Updating&) = delete;
  Updating& operator=(const Updating&) = delete;

 private:
  Session& session_;
};

Database::Database(const std::filesystem::path& file, std::u16string_view shownPath,
                   Password password)
    : session_(std::make_unique<Session>(file, shownPath)) {
  if (session_->pager.header().password != password.text) throw error::wrongPassword();
}

Database::~Database() = default;

Version Database::version() const {
  return session_->pager.header().version;
}

TextOrder Database::textOrder() const {
  return textOrderOf(version());
}

std::optional<CatalogObject> Database::find(std::u16string_view name) {
  return session_->catalog.find(name);
}

const Table& Database::table(const CatalogObject& object) {
  const PageNumber page = definitionPageOf(object.id);
  std::unique_ptr<Table>& table = session_->tables[page];
  if (!table) table = std::make_unique<Table>(session_->pager, object.name, page);
  return *table;
}

std::vector<QueryRow> Database::queryRows(const CatalogObject& object) {
  return session_->catalog.queryRows(object.id);
}

std::vector<runtime::Variant> Database::update(const RowChange& change, const RuleTest& holds) {
  const Updating lock(*session_);
  RowUpdate update(session_->pager, session_->catalog, change);
  update.run(holds);
  return update.readAgain();
}

void Database::release() noexcept {
  session_->release();
}

}  // namespace jet
