#include <QCheckBox>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "platform/forms/StandardControls.h"
#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Text.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

/// The tick box paints its own caption, so that no character of it is a mark, on the stored back
/// colour.
class TickBox : public QCheckBox {
 public:
  TickBox(CheckBox& control, QWidget* parent, const Design& design)
      : QCheckBox(parent),
        control_(control),
        caption_(qt::toQt(design.caption)),
        back_(design.backColour),
        fore_(design.foreColour) {
    // The toolkit's text serves screen readers alone; it takes a doubled mark for a plain one.
    setText(QString(caption_).replace('&', "&&"));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr int kGap = 6;
    constexpr double kVisible = 2;
    QPainter painter(this);
    const QColor back = qt::drawnColour(back_, palette());
    const QColor text = qt::textOn(fore_, back, palette());
    painter.fillRect(rect(), back);

    QStyleOptionButton option;
    initStyleOption(&option);
    option.palette.setColor(QPalette::Base, back);
    option.palette.setColor(QPalette::Text, text);
    // On a screen that is laid out smaller the box can be lower than its mark.
    const int side = qMin(style()->pixelMetric(QStyle::PM_IndicatorHeight), height());
    option.rect = QRect(0, (height() - side) / 2, side, side);
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, this);

    const QRect room = rect().adjusted(option.rect.right() + 1 + kGap, 0, 0, 0);
    painter.setPen(text);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, caption_);
    if (hasFocus()) {
      const int width = qMin(painter.fontMetrics().horizontalAdvance(caption_), room.width() - 3);
      const QColor accent = palette().color(QPalette::Highlight);
      qt::DeviceFrames frames(painter, {room.x() - 4, 0, width + 8, height()}, 2);
      frames.frame(qt::contrast(accent, back) < kVisible ? text : accent, 2, 0);
    }
  }

  bool hitButton(const QPoint& at) const override { return rect().contains(at); }

  // The toolkit's one place through which the user changes the box, by mouse, key or reader.
  void nextCheckState() override {
    process::dispatch([this] { control_.Value(control_.Value() == 0 ? 1 : 0); });
  }

 private:
  CheckBox& control_;
  QString caption_;
  Colour back_;
  Colour fore_;
};

constexpr std::int16_t kGreyed = 2;

}  // namespace

CheckBox::CheckBox(Container& container, const Design& design)
    : Control(container, design, 0, new TickBox(*this, clientOf(container), design)) {}

void CheckBox::Value(std::int16_t value) {
  if (value < 0 || value > kGreyed)
    throw runtime::RunTimeError(runtime::ErrorNumber::InvalidPropertyValue);
  if (value == value_) return;
  value_ = value;
  static_cast<QCheckBox*>(widget())->setCheckState(value == kGreyed ? Qt::PartiallyChecked
                                                   : value == 1     ? Qt::Checked
                                                                    : Qt::Unchecked);
  if (Click) Click();
}

}  // namespace forms
