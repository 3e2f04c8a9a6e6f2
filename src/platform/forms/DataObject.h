#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace forms {

/// Format of a drag's data: plain text.
inline constexpr std::int16_t kTextFormat = 1;

/// The data of a drag.
class DataObject {
 public:
  virtual ~DataObject() = default;
  virtual bool GetFormat(std::int16_t format) const = 0;
  virtual std::u16string GetData(std::int16_t format) const = 0;
  /// Sets the data to a plain text.
  virtual void SetData(std::u16string_view text) = 0;
};

/// Effects of a drag.
inline constexpr std::int32_t kDropCopy = 1;
inline constexpr std::int32_t kDropMove = 2;
/// Drop modes of a control.
inline constexpr std::int16_t kDropNone = 0;
inline constexpr std::int16_t kDropManual = 1;

}  // namespace forms
