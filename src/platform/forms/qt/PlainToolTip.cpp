#include "platform/forms/qt/PlainToolTip.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

#include "platform/forms/qt/WideText.h"

namespace forms::qt {
namespace {

class PlainToolTip : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    const QPoint at = static_cast<QHelpEvent*>(event)->globalPos();
    QToolTip::showText(at, "<qt>" + widget->toolTip().toHtmlEscaped() + "</qt>", widget);
    return true;
  }
};

}  // namespace

void setPlainToolTip(QWidget& widget, std::u16string_view text) {
  widget.setToolTip(toQt(text));
  widget.installEventFilter(new PlainToolTip(&widget));
}

}  // namespace forms::qt
