// The peer of the editor's start: a bare maximised window of the toolkit with this number of
// buttons and rows.
//
//   plain_window BUTTONS ROWS

#include <QApplication>
#include <cstdlib>

#include "PlainWindow.h"

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  bench::PlainWindow window(count > 1 ? std::atoi(arguments[1]) : 0,
                            count > 2 ? std::atoi(arguments[2]) : 0);
  window.showMaximized();
  return QApplication::exec();
}
