#include "platform/jet/engine/KeyRange.h"

#include "platform/jet/engine/SeekValue.h"
#include "platform/jet/format/IndexKey.h"

namespace jet {
namespace {

using Outcome = SeekValue::Outcome;

/// The smallest byte string greater than all that begin with `bytes`; absent where there is none.
std::optional<Bytes> afterPrefix(Bytes bytes) {
  while (!bytes.empty() && bytes.back() == 0xFF) bytes.pop_back();
  if (bytes.empty()) return std::nullopt;
  ++bytes.back();
  return bytes;
}

Bytes with(Bytes bytes, std::uint8_t more) {
  bytes.push_back(more);
  return bytes;
}

/// Builds the range column by column.
class Builder {
 public:
  Builder(const TableSource& source, const RowKey& key) : source_(source), key_(key) {}

  KeyRange build(const IndexRange& range) {
    std::size_t column = 0;
    for (const runtime::Variant& value : range.equal) {
      if (column == key_.parts().size() || !addEqual(key_.parts()[column], value)) {
        result_.from = prefix_;
        result_.before = afterPrefix(prefix_);
        return result_;
      }
      ++column;
    }
    result_.from = prefix_;
    result_.before = afterPrefix(prefix_);
    if (column < key_.parts().size()) addBounds(key_.parts()[column], range);
    return result_;
  }

 private:
  bool append(const RowKey::Part& part, const runtime::Variant& value, Bytes& key) const {
    return appendKey(source_.version(), definition(part), part.ascending, value, key);
  }
  const ColumnDefinition& definition(const RowKey::Part& part) const {
    return source_.column(part.column);
  }

  /// False where the value has no key: the range then ends before this column.
  bool addEqual(const RowKey::Part& part, const runtime::Variant& value) {
    if (value.isNull()) {
      prefix_.push_back(nullKey(part.ascending));
      return true;
    }
    const SeekValue seek = seekValue(definition(part), Comparison::Equal, value);
    if (seek.outcome == Outcome::NoRow) result_.isEmpty = true;
    return seek.outcome == Outcome::Value && append(part, seek.value, prefix_);
  }

  void addBounds(const RowKey::Part& part, const IndexRange& range) {
    if (!range.lower && !range.upper && !range.notNull) return;
    // Nulls come before all values in an ascending column, after them in a descending one.
    if (part.ascending)
      result_.from = with(prefix_, nullKey(true) + 1);
    else
      result_.before = with(prefix_, nullKey(false));
    if (range.lower) addBound(part, Comparison::AtLeast, *range.lower);
    if (range.upper) addBound(part, Comparison::AtMost, *range.upper);
  }

  void addBound(const RowKey::Part& part, Comparison comparison, const runtime::Variant& bound) {
    if (bound.isNull()) {
      result_.isEmpty = true;
      return;
    }
    const SeekValue seek = seekValue(definition(part), comparison, bound);
    if (seek.outcome == Outcome::NoRow) result_.isEmpty = true;
    Bytes key = prefix_;
    if (seek.outcome != Outcome::Value || !append(part, seek.value, key)) return;
    const bool first = (comparison == Comparison::AtLeast) == part.ascending;
    if (first)
      result_.from = key;
    else
      result_.before = afterPrefix(key);
  }

  const TableSource& source_;
  const RowKey& key_;
  Bytes prefix_;
  KeyRange result_;
};

}  // namespace

KeyRange keyRange(const TableSource& source, const RowKey& key, const IndexRange& range) {
  return Builder(source, key).build(range);
}

}  // namespace jet
