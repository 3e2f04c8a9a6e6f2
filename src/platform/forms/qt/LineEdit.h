#pragma once

#include <QLineEdit>

#include "platform/forms/qt/OneLine.h"

namespace forms::qt {

/// A line of text that the user edits.
class LineEdit final : public QLineEdit {
 public:
  /// `maxLength`: 0 for no limit.
  LineEdit(QWidget* parent, int maxLength);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const OneLine& oneLine_;
};

}  // namespace forms::qt
