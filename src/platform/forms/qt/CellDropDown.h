#pragma once

#include <QComboBox>

#include "platform/forms/qt/LeftPress.h"

namespace forms::qt {

class SheetView;

/// Stands in the active cell of a sheet while that is a drop-down cell. The list opens by a click,
/// by F4, by Alt and an arrow, by the space bar and by a letter, which seeks its entry; without the
/// list the keys move on in the sheet and nothing changes the choice.
class CellDropDown final : public QComboBox {
 public:
  explicit CellDropDown(SheetView& view);
  void showPopup() override;
  void hidePopup() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  SheetView& view_;
  LeftPress press_;
};

}  // namespace forms::qt
