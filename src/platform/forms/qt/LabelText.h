#pragma once

#include <QLabel>

#include "platform/forms/Measures.h"

namespace forms::qt {

/// A label that paints its own text: no character of it is a mnemonic or markup.
class LabelText : public QLabel {
 public:
  /// `below` is the colour that shows through a transparent label.
  LabelText(QWidget* parent, const Design& design, Colour below);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Colour back_;
  Colour fore_;
  bool transparent_;
};

}  // namespace forms::qt
