#pragma once

#include <QPushButton>
#include <QWidget>
#include <vector>

namespace bench {

/// A bare window of the toolkit with `buttons` plain push buttons and a list of `rows` plain rows,
/// laid out like the levelled editor's keys and item list.
class PlainWindow : public QWidget {
 public:
  PlainWindow(int buttons, int rows);

  /// Sets the captions to "Product N" with consecutive numbers from `firstProduct` on.
  void setCaptions(int firstProduct);

 private:
  std::vector<QPushButton*> buttons_;
};

}  // namespace bench
