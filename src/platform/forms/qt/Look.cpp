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

// Wide enough that the rows don't cover the frame's line at any scale.
constexpr int kListFrame = 2;

// Distance of a box's text from its left edge.
constexpr int kBoxInset = 6;

bool isList(const QWidget* widget) {
  return qobject_cast<const QAbstractItemView*>(widget) != nullptr;
}

bool isFramedBox(const QStyleOption* option, const QWidget* widget) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  return frame != nullptr && frame->lineWidth > 0 && qobject_cast<const QLineEdit*>(widget);
}

bool isDropDownFrame(const QWidget* widget) {
  return widget != nullptr && widget->inherits("QComboBoxPrivateContainer");
}

/// A box in the window colours. Its frame shows the pointer and the focus.
void paintBox(QPainter& painter, const QStyleOption& option) {
  const QPalette& colours = option.palette;
  const QColor base = colours.color(QPalette::Base);
  const bool hovered = (option.state & QStyle::State_MouseOver) != 0;
  DeviceFrames frames(painter, option.rect, 2);
  frames.fill(base);
  if ((option.state & QStyle::State_HasFocus) != 0)
    frames.frame(colours.color(QPalette::Highlight), 2, 0);
  else
    frames.frame(mixed(base, colours.color(QPalette::Text), hovered ? 0.6 : 0.3), 1, 0);
}

/// The frame of an open list, visible on any background.
void paintDropDownFrame(QPainter& painter, const QStyleOption& option) {
  const QPalette& colours = option.palette;
  const QColor base = colours.color(QPalette::Base);
  DeviceFrames frames(painter, option.rect, 0);
  frames.fill(base);
  frames.frame(mixed(base, colours.color(QPalette::Text), 0.5), 1, 0);
}

/// A box in the palette's base colour with a tick in its text colour.
void paintCheckBoxIndicator(QPainter& painter, const QStyleOption& option) {
  const QColor base = option.palette.color(QPalette::Base);
  const QColor text = option.palette.color(QPalette::Text);
  const bool sunken = (option.state & QStyle::State_Sunken) != 0;
  const bool hovered = (option.state & QStyle::State_MouseOver) != 0;
  {
    DeviceFrames frames(painter, option.rect, 2);
    frames.fill(sunken ? mixed(base, text, 0.15) : base);
    frames.frame(mixed(base, text, hovered ? 0.8 : 0.5), 1, 0);
  }
  if ((option.state & QStyle::State_On) != 0) paintCheckBoxMark(painter, option.rect, text);
  if ((option.state & QStyle::State_NoChange) != 0)
    DeviceFrames(painter, option.rect.adjusted(4, 4, -4, -4), 1).fill(mixed(base, text, 0.5));
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
  constexpr int kCheckBoxSide = 16;
  constexpr int kScrollBar = 24;  // wide enough for a finger
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
      return kCheckBoxSide;
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
  const bool framed = (element == PE_PanelLineEdit && isFramedBox(option, widget)) ||
                      (element == PE_Frame && isList(widget));
  if (framed)
    paintBox(*painter, *option);
  else if (element == PE_Frame && isDropDownFrame(widget))
    paintDropDownFrame(*painter, *option);
  else if (element == PE_IndicatorCheckBox)
    paintCheckBoxIndicator(*painter, *option);
  else
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void Look::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const {
  const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
  if (element != CE_ComboBoxLabel || box == nullptr) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  const QRect area = box->rect.adjusted(kBoxInset, 0, -kDropArrowRoom, 0);
  painter->setPen(box->palette.color(QPalette::Text));
  painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                    box->fontMetrics.elidedText(box->currentText, Qt::ElideRight, area.width()));
}

void Look::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                              QPainter* painter, const QWidget* widget) const {
  if (control != CC_ComboBox) {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    return;
  }
  paintBox(*painter, *option);
  paintDropArrow(*painter, option->rect, option->palette.color(QPalette::Text));
}

QIcon Look::standardIcon(StandardPixmap icon, const QStyleOption* option,
                         const QWidget* widget) const {
  switch (icon) {
    case SP_MessageBoxInformation:
      return messageIcon(MessageIcon::Information);
    case SP_MessageBoxCritical:
      return messageIcon(MessageIcon::Failure);
    default:
      return QProxyStyle::standardIcon(icon, option, widget);
  }
}

}  // namespace forms::qt
