#pragma once

#include <QLineEdit>

#include "platform/forms/qt/LeftPress.h"
#include "platform/forms/qt/OneLine.h"

namespace forms::qt {

class SheetView;

/// The editor in the active cell of a sheet while that is a text cell: typed text changes the cell
/// at once. Keys that a single line doesn't need move in the sheet.
class CellEdit final : public QLineEdit {
 public:
  explicit CellEdit(SheetView& view);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  SheetView& view_;
  const OneLine& oneLine_;
  LeftPress press_;
};

}  // namespace forms::qt
