#include <QCheckBox>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "platform/forms/StandardControls.h"
#include "platform/forms/qt/Colours.h"
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
    QPainter painter(this);
    const QColor back = qt::drawnColour(back_, palette());
    const QColor text = qt::textOn(fore_, back, palette());
    painter.fillRect(rect(), back);

    QStyleOptionButton option;
    initStyleOption(&option);
    option.palette = boxPalette(back, text);
    option.rect = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, this);

    const QRect room = rect().adjusted(option.rect.right() + 1 + kGap, 0, 0, 0);
    painter.setPen(text);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, caption_);
    if (hasFocus()) {
      const int width = qMin(painter.fontMetrics().horizontalAdvance(caption_), room.width() - 2);
      painter.setPen(QPen(text, 1, Qt::DotLine));
      painter.drawRect(QRect(room.x() - 3, 2, width + 5, height() - 5));
    }
  }

  bool hitButton(const QPoint& at) const override { return rect().contains(at); }

  // The toolkit's one place through which the user changes the box, by mouse, key or reader.
  void nextCheckState() override {
    process::dispatch([this] { control_.Value(control_.Value() == 0 ? 1 : 0); });
  }

 private:
  /// The indicator's colours, which must stand on the box's own back colour in any theme.
  QPalette boxPalette(const QColor& back, const QColor& text) const {
    QPalette colours = palette();
    if (qt::contrast(back, palette().color(QPalette::Base)) < 2) return colours;
    colours.setColor(QPalette::Base, back);
    colours.setColor(QPalette::Window, back);
    colours.setColor(QPalette::Button, back);
    colours.setColor(QPalette::Text, text);
    colours.setColor(QPalette::WindowText, text);
    return colours;
  }

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
