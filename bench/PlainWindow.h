#pragma once

#include <QPushButton>
#include <QWidget>
#include <vector>

namespace bench {

/// A bare window of the toolkit with so many plain push buttons and a list of so many plain rows,
/// laid out like the levelled editor's keys and item list.
class PlainWindow : public QWidget {
 public:
  PlainWindow(int buttons, int rows);

  /// Names the buttons after products of running numbers.
  void name(int firstProduct);

 private:
  std::vector<QPushButton*> buttons_;
};

}  // namespace bench
