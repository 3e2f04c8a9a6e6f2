#pragma once

#include <QComboBox>

#include "platform/forms/qt/LeftPress.h"

namespace forms::qt {

class GridView;

/// The editor of a grid's active cell when that is a drop-down cell. A click, F4, Alt with Up or
/// Down, the space bar or a letter opens the list; a letter also selects an entry that begins with
/// it. While the list is closed, other keys move the active cell and don't change the choice.
class CellDropDown final : public QComboBox {
 public:
  explicit CellDropDown(GridView& view);
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
  GridView& view_;
  LeftPress press_;
};

}  // namespace forms::qt
