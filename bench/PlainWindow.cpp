#include "PlainWindow.h"

#include <QListWidget>

namespace bench {

PlainWindow::PlainWindow(int buttons, int rows) {
  constexpr int kColumns = 7;
  constexpr QRect kButton(12, 18, 88, 70);
  constexpr QSize kPitch(90, 72);
  constexpr QRect kList(663, 174, 272, 322);

  setWindowTitle("Plain");
  for (int i = 0; i < buttons; ++i) {
    buttons_.push_back(new QPushButton(this));
    buttons_.back()->setGeometry(
        kButton.translated(kPitch.width() * (i % kColumns), kPitch.height() * (i / kColumns)));
  }
  setCaptions(0);
  auto* list = new QListWidget(this);
  list->setGeometry(kList);
  for (int i = 0; i < rows; ++i) list->addItem("Product of the store " + QString::number(i));
}

void PlainWindow::setCaptions(int firstProduct) {
  int product = firstProduct;
  for (QPushButton* button : buttons_) button->setText("Product " + QString::number(product++));
}

}  // namespace bench
