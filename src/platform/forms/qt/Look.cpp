#include "platform/forms/qt/Look.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QStyleFactory>
#include <QStyleOption>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"
#include "platform/forms/qt/Pictures.h"

namespace forms::qt {
namespace {

// Wide enough that the rows never cover the frame's line, at any scale.
constexpr int kListFrame = 2;

bool isList(const QWidget* widget) {
  return qobject_cast<const QAbstractItemView*>(widget) != nullptr;
}

bool isFramedBox(const QStyleOption* option, const QWidget* widget) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  return frame != nullptr && frame->lineWidth > 0 && qobject_cast<const QLineEdit*>(widget);
}

}  // namespace

Look::Look() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int Look::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                    QStyleHintReturn* result) const {
  // A drop-down opens as a list below its box, not as a menu over it.
  if (hint == SH_ComboBox_Popup) return 0;
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, result);
}

int Look::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  constexpr int kTickBox = 16;
  constexpr int kScrollBar = 18;  // wide enough for a finger
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
      return kTickBox;
    case PM_ScrollBarExtent:
      return kScrollBar;
    case PM_DefaultFrameWidth:
      return isList(widget) ? kListFrame : QProxyStyle::pixelMetric(metric, option, widget);
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

void Look::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                         const QWidget* widget) const {
  const bool isBox = element == PE_PanelLineEdit && isFramedBox(option, widget);
  if (!isBox && (element != PE_Frame || !isList(widget))) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  const QPalette& colours = option->palette;
  const QColor base = colours.color(QPalette::Base);
  DeviceFrames frames(*painter, option->rect, 2);
  frames.fill(base);
  if ((option->state & State_HasFocus) != 0)
    frames.frame(colours.color(QPalette::Highlight), 2, 0);
  else
    frames.frame(mixed(base, colours.color(QPalette::Text), 0.3), 1, 0);
}

QIcon Look::standardIcon(StandardPixmap icon, const QStyleOption* option,
                         const QWidget* widget) const {
  switch (icon) {
    case SP_MessageBoxInformation:
      return noteIcon(Note::Information);
    case SP_MessageBoxCritical:
      return noteIcon(Note::Failure);
    default:
      return QProxyStyle::standardIcon(icon, option, widget);
  }
}

}  // namespace forms::qt
