#include "platform/forms/qt/KeyBlock.h"

#include <QList>
#include <algorithm>
#include <cstdlib>

#include "platform/forms/qt/KeyFace.h"

namespace forms::qt {
namespace {

QList<KeyFace*> shownKeys(const KeyFace& key) {
  QList<KeyFace*> keys;
  for (QObject* sibling : key.parentWidget()->children()) {
    auto* const face = dynamic_cast<KeyFace*>(sibling);
    if (face != nullptr && face->isKey() && !face->isHidden()) keys.append(face);
  }
  return keys;
}

QPoint centre(const KeyFace& key) {
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

GridPosition positionOf(const KeyFace& key) {
  QList<int> across;
  QList<int> down;
  for (const KeyFace* other : shownKeys(key)) {
    across.append(centre(*other).x());
    down.append(centre(*other).y());
  }
  return {.row = 1 + linesBefore(centre(key).y(), key.height(), down),
          .column = 1 + linesBefore(centre(key).x(), key.width(), across)};
}

KeyFace* neighbour(const KeyFace& key, int arrow) {
  const bool across = arrow == Qt::Key_Left || arrow == Qt::Key_Right;
  if (!across && arrow != Qt::Key_Up && arrow != Qt::Key_Down) return nullptr;
  const int sign = arrow == Qt::Key_Right || arrow == Qt::Key_Down ? 1 : -1;
  KeyFace* nearest = nullptr;
  int nearestWay = 0;
  for (KeyFace* other : shownKeys(key)) {
    const QPoint apart = centre(*other) - centre(key);
    const int way = sign * (across ? apart.x() : apart.y());
    const bool inLine =
        across ? std::abs(apart.y()) < key.height() / 2 : std::abs(apart.x()) < key.width() / 2;
    if (!inLine || way <= 0 || (nearest != nullptr && way >= nearestWay)) continue;
    nearest = other;
    nearestWay = way;
  }
  return nearest;
}

void tellCurrentKeys(const KeyFace& key) {
  for (KeyFace* other : shownKeys(key)) other->tellCurrent();
}

}  // namespace forms::qt
