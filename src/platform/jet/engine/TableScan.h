#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/jet/engine/Cursor.h"
#include "platform/jet/engine/TableSource.h"

namespace jet {

/// All rows of a table, page by page. A row that moved is returned at its original slot.
class TableScan : public Cursor {
 public:
  explicit TableScan(const TableSource& source);

  bool next() override;
  const Row& row() const override { return row_; }

 private:
  bool openNextPage();
  PageNumber endOfRun() const;

  const TableSource& source_;
  std::vector<PageNumber> pages_;
  std::size_t nextPage_ = 0;
  PageNumber pageNumber_;
  std::optional<OpenDataPage> open_;
  std::size_t nextSlot_ = 0;
  FoundRow found_;
  Row row_;
};

}  // namespace jet
