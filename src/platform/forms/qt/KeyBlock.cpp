#include "platform/forms/qt/KeyBlock.h"

#include <QList>
#include <algorithm>
#include <cstdlib>

#include "platform/forms/qt/ButtonWidget.h"

namespace forms::qt {
namespace {

QList<ButtonWidget*> shownKeys(const ButtonWidget& key) {
  QList<ButtonWidget*> keys;
  for (QObject* sibling : key.parentWidget()->children()) {
    auto* const button = dynamic_cast<ButtonWidget*>(sibling);
    if (button != nullptr && button->isKey() && !button->isHidden()) keys.append(button);
  }
  return keys;
}

QPoint centre(const ButtonWidget& key) {
  return key.geometry().center();
}

/// The number of rows or columns before coordinate `at`, given the centres of the keys along that
/// axis. Centres less than half an `extent` (a key's size) apart belong to one row or column.
int linesBefore(int at, int extent, QList<int> centres) {
  std::ranges::sort(centres);
  int lines = 0;
  const int* last = nullptr;
  for (const int& next : centres) {
    if (at - next < extent / 2) break;
    if (last == nullptr || next - *last >= extent / 2) ++lines;
    last = &next;
  }
  return lines;
}

}  // namespace

KeyBlockPosition positionOf(const ButtonWidget& key) {
  QList<int> across;
  QList<int> down;
  for (const ButtonWidget* other : shownKeys(key)) {
    across.append(centre(*other).x());
    down.append(centre(*other).y());
  }
  return {.row = 1 + linesBefore(centre(key).y(), key.height(), down),
          .column = 1 + linesBefore(centre(key).x(), key.width(), across)};
}

ButtonWidget* neighbour(const ButtonWidget& key, int arrow) {
  const bool across = arrow == Qt::Key_Left || arrow == Qt::Key_Right;
  if (!across && arrow != Qt::Key_Up && arrow != Qt::Key_Down) return nullptr;
  const int sign = arrow == Qt::Key_Right || arrow == Qt::Key_Down ? 1 : -1;
  ButtonWidget* nearest = nullptr;
  int nearestDistance = 0;
  for (ButtonWidget* other : shownKeys(key)) {
    const QPoint apart = centre(*other) - centre(key);
    const int distance = sign * (across ? apart.x() : apart.y());
    const bool inLine =
        across ? std::abs(apart.y()) < key.height() / 2 : std::abs(apart.x()) < key.width() / 2;
    if (!inLine || distance <= 0 || (nearest != nullptr && distance >= nearestDistance)) continue;
    nearest = other;
    nearestDistance = distance;
  }
  return nearest;
}

void announceCurrentKeys(const ButtonWidget& key) {
  for (ButtonWidget* other : shownKeys(key)) other->announceCurrent();
}

}  // namespace forms::qt
