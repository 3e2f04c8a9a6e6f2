// The peer of the editor's start: a bare window of the toolkit, as large, with as many buttons and
// rows.
//
//   plain_window BUTTONS ROWS

#include <QApplication>
#include <cstdlib>

#include "PlainWindow.h"

int main(int count, char** words) {
  const QApplication application(count, words);
  bench::PlainWindow window(count > 1 ? std::atoi(words[1]) : 0,
                            count > 2 ? std::atoi(words[2]) : 0);
  window.showMaximized();
  return QApplication::exec();
}
