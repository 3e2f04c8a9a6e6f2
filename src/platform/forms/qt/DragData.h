#pragma once

#include <QMimeData>

#include "platform/forms/DataObject.h"
#include "platform/forms/qt/WideText.h"

namespace forms::qt {

inline constexpr const char* kPlainText = "text/plain";

/// The data of a drag that a list starts: set by the screen, passed to the toolkit.
class OutgoingData : public DataObject {
 public:
  explicit OutgoingData(QMimeData& mime) : mime_(mime) {}

  bool GetFormat(std::int16_t format) const override {
    return format == kTextFormat && mime_.hasFormat(kPlainText);
  }
  std::u16string GetData(std::int16_t format) const override {
    return GetFormat(format) ? fromQt(mime_.text()) : std::u16string();
  }
  // The toolkit ignores a null string, so an empty text is passed as an empty string.
  void SetData(std::u16string_view text) override {
    mime_.setText(text.empty() ? QStringLiteral("") : toQt(text));
  }

 private:
  QMimeData& mime_;
};

/// The data of a drop, copied before the handler runs: the source program may end while it runs.
class DroppedData : public DataObject {
 public:
  explicit DroppedData(const QMimeData& mime)
      : hasText_(mime.hasFormat(kPlainText)), text_(hasText_ ? fromQt(mime.text()) : u"") {}

  bool GetFormat(std::int16_t format) const override { return format == kTextFormat && hasText_; }
  std::u16string GetData(std::int16_t format) const override {
    return GetFormat(format) ? text_ : std::u16string();
  }
  void SetData(std::u16string_view text) override {
    hasText_ = true;
    text_ = text;
  }

 private:
  bool hasText_;
  std::u16string text_;
};

}  // namespace forms::qt
