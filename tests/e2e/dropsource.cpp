// Another program on the same desktop: a small window from which a text can be dragged. It reports
// on standard output when a drag begins, whether the window below the pointer would accept it, and
// how it ends.
//
//   dropsource TEXT

#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <cstdio>

namespace {

void say(const char* what) {
  std::puts(what);
  std::fflush(stdout);
}

class Source : public QLabel {
 public:
  explicit Source(QString text) : QLabel("Drag me"), text_(std::move(text)) {
    setWindowTitle("Drop source");
    setAlignment(Qt::AlignCenter);
    setFixedSize(160, 80);
    setWindowFlag(Qt::WindowStaysOnTopHint);
    move(1500, 700);
  }

 protected:
  void mousePressEvent(QMouseEvent*) override {
    auto* drag = new QDrag(this);
    auto* content = new QMimeData;
    content->setText(text_);
    drag->setMimeData(content);
    connect(drag, &QDrag::actionChanged, this, [](Qt::DropAction action) {
      say(action == Qt::IgnoreAction ? "refused" : "accepted");
    });
    say("dragging");
    say(drag->exec(Qt::CopyAction | Qt::MoveAction) == Qt::IgnoreAction ? "dropped nowhere"
                                                                        : "dropped");
  }

 private:
  QString text_;
};

}  // namespace

int main(int count, char** arguments) {
  QApplication application(count, arguments);
  Source source(application.arguments().value(1));
  source.show();
  return QApplication::exec();
}
