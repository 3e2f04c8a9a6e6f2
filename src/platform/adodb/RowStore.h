#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/jetsql/ResultRow.h"

namespace ADODB {

/// The rows of a result, packed: a text of Latin letters takes a byte a letter, a number as many as
/// it needs.
class RowStore {
 public:
  /// Raises the engine's error when the rows take more memory than any result should.
  void add(const jetsql::ResultRow& row);
  /// Puts other values in a row's place.
  void replace(std::size_t row, const jetsql::ResultRow& values);

  std::size_t count() const { return rows_.size(); }
  runtime::Variant value(std::size_t row, std::size_t column, jetsql::Type type) const;
  /// Packed id of the table row at a place of the row's sources.
  std::uint32_t source(std::size_t row, std::size_t place) const;

 private:
  const std::uint8_t* store(const jetsql::ResultRow& row);
  void pack(const jetsql::RawValue& value);

  std::vector<const std::uint8_t*> rows_;
  std::vector<std::unique_ptr<std::uint8_t[]>> blocks_;
  std::size_t blockUsed_ = 0;
  std::size_t blockSize_ = 0;
  std::size_t total_ = 0;
  std::vector<std::uint8_t> packed_;
};

}  // namespace ADODB
