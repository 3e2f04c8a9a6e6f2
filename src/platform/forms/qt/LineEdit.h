#pragma once

#include <QLineEdit>

namespace forms::qt {

/// A line of text that the user edits.
class LineEdit final : public QLineEdit {
 public:
  /// `maxLength`: 0 for no limit.
  LineEdit(QWidget* parent, int maxLength);
};

}  // namespace forms::qt
