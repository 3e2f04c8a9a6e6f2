#pragma once

#include <QCheckBox>
#include <functional>

#include "platform/forms/Measures.h"

namespace forms::qt {

/// A check box that paints its own caption on the stored back colour: no character of the caption
/// is a mnemonic.
class CheckBoxWidget : public QCheckBox {
 public:
  /// `toggle` is called, through the dispatcher, when the user changes the box; the box itself
  /// changes only by `setCheckState`.
  CheckBoxWidget(QWidget* parent, const Design& design, std::function<void()> toggle);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& at) const override { return rect().contains(at); }
  void nextCheckState() override;

 private:
  std::function<void()> toggle_;
  QString caption_;
  Colour back_;
  Colour fore_;
};

}  // namespace forms::qt
