#include "platform/forms/qt/CheckBoxWidget.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <utility>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/WideText.h"

namespace forms::qt {

CheckBoxWidget::CheckBoxWidget(QWidget* parent, const Design& design, std::function<void()> toggle)
    : QCheckBox(parent),
      toggle_(std::move(toggle)),
      caption_(toQt(design.caption)),
      back_(design.backColour),
      fore_(design.foreColour) {
  // The toolkit's text is only for screen readers; in it "&&" stands for "&".
  setText(QString(caption_).replace('&', "&&"));
}

void CheckBoxWidget::paintEvent(QPaintEvent*) {
  constexpr int kGap = 6;
  constexpr double kVisible = 2;
  QPainter painter(this);
  const QColor back = drawnColour(back_, palette());
  const QColor text = textOn(fore_, back, palette());
  painter.fillRect(rect(), back);

  QStyleOptionButton option;
  initStyleOption(&option);
  option.palette.setColor(QPalette::Base, back);
  option.palette.setColor(QPalette::Text, text);
  // At a small scale the control can be less high than the indicator.
  const int side = qMin(style()->pixelMetric(QStyle::PM_IndicatorHeight), height());
  option.rect = QRect(0, (height() - side) / 2, side, side);
  style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, this);

  const QRect room = rect().adjusted(option.rect.right() + 1 + kGap, 0, 0, 0);
  painter.setPen(text);
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, caption_);
  if (hasFocus()) {
    const int width = qMin(painter.fontMetrics().horizontalAdvance(caption_), room.width() - 3);
    const QColor accent = palette().color(QPalette::Highlight);
    DeviceFrames frames(painter, QRect(room.x() - 4, 0, width + 8, height()), 2);
    frames.frame(contrast(accent, back) < kVisible ? text : accent, 2, 0);
  }
}

// The toolkit calls this for every change by the user, with mouse, key or screen reader.
void CheckBoxWidget::nextCheckState() {
  qt::dispatch(toggle_);
}

}  // namespace forms::qt
