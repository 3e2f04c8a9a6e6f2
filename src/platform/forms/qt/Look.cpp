#include "platform/forms/qt/Look.h"

#include <QStyleFactory>

namespace forms::qt {

Look::Look() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int Look::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                    QStyleHintReturn* result) const {
  // A drop-down opens as a list below its box, not as a menu over it.
  if (hint == SH_ComboBox_Popup) return 0;
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
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

}  // namespace forms::qt
