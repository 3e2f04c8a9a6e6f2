// The peer of the editor's start: a bare window of the toolkit of the same size, with BUTTONS plain
// push buttons and a list of ROWS plain rows, laid out like the editor's keys and item list.
//
//   plain_window BUTTONS ROWS

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <cstdlib>

int main(int count, char** words) {
  constexpr int kColumns = 7;
  constexpr QRect kButton(12, 18, 88, 70);
  constexpr QSize kPitch(90, 72);
  constexpr QRect kList(663, 174, 272, 322);

  const QApplication application(count, words);
  const int buttons = count > 1 ? std::atoi(words[1]) : 0;
  const int rows = count > 2 ? std::atoi(words[2]) : 0;
  QWidget window;
  window.setWindowTitle("Plain");
  for (int i = 0; i < buttons; ++i) {
    auto* button = new QPushButton("Product " + QString::number(i), &window);
    button->setGeometry(
        kButton.translated(kPitch.width() * (i % kColumns), kPitch.height() * (i / kColumns)));
  }
  auto* list = new QListWidget(&window);
  list->setGeometry(kList);
  for (int i = 0; i < rows; ++i) list->addItem("Product of the store " + QString::number(i));
  window.showMaximized();
  return QApplication::exec();
}
