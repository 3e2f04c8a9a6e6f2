#pragma once

#include <QGroupBox>

#include "platform/forms/Measures.h"

namespace forms::qt {

/// A plain area of one colour; for screen readers a group of the controls in it.
class Surface : public QGroupBox {
 public:
  Surface(QWidget* parent, Colour colour);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Colour colour_;
};

}  // namespace forms::qt
