#pragma once

#include <QLineEdit>

#include "platform/forms/qt/LeftPress.h"

namespace forms::qt {

class GridView;

/// The editor of a grid's active cell when that is a text cell: typed text changes the cell at
/// once. Keys without a meaning in a one-line editor move the active cell.
class CellEdit final : public QLineEdit {
 public:
  explicit CellEdit(GridView& view);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  GridView& view_;
  LeftPress press_;
};

}  // namespace forms::qt
