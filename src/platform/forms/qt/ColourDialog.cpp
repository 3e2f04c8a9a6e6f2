#include "platform/forms/qt/ColourDialog.h"

#include <QLayout>
#include <QScreen>
#include <QStyle>

namespace forms::qt {

ColourDialog::ColourDialog(QWidget* parent) : QColorDialog(parent) {
  constexpr int kTightSpacing = 2;
  constexpr double kStep = 0.5;
  setWindowTitle(QStringLiteral("Colour"));
  setOption(QColorDialog::DontUseNativeDialog);
  if (fits()) return;
  for (QLayout* part : findChildren<QLayout*>()) {
    part->setSpacing(kTightSpacing);
    part->setContentsMargins(kTightSpacing, kTightSpacing, kTightSpacing, kTightSpacing);
  }
  QFont smaller = font();
  const double least = smaller.pointSizeF() / devicePixelRatioF();
  while (!fits() && smaller.pointSizeF() - kStep >= least) {
    smaller.setPointSizeF(smaller.pointSizeF() - kStep);
    for (QWidget* part : findChildren<QWidget*>()) part->setFont(smaller);
  }
}

bool ColourDialog::fits() const {
  layout()->invalidate();
  const int room =
      screen()->availableGeometry().height() - style()->pixelMetric(QStyle::PM_TitleBarHeight);
  return layout()->totalSizeHint().height() <= room;
}

}  // namespace forms::qt
