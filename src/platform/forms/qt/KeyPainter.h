#pragma once

#include <QPainter>
#include <QPalette>
#include <QTextLayout>

namespace forms::qt {

/// A caption laid out for an area: wrapped at words, within a word where one is too long, every
/// line centred. No character of it is a mark or markup.
class CaptionLayout {
 public:
  void set(const QString& caption) {
    caption_ = caption;
    size_ = {};
  }
  void set(const QFont& font) {
    font_ = font;
    size_ = {};
  }
  /// Paints the lines that have room, in the painter's pen. Where that keeps words whole, the
  /// lines take `reserve` pixels more on either side.
  void paint(QPainter& painter, QRect area, int reserve);

 private:
  void layOut(int width);
  bool breaksWord() const;

  QString caption_;
  QFont font_;
  QTextLayout layout_;
  QSize size_;       ///< for which it is laid out, without the reserve
  int reserve_ = 0;  ///< that the lines take
};

/// How a button stands at the moment.
struct KeyLook {
  QColor back;
  QColor text;
  double scale = 1;  ///< of the screen's layout
  bool hovered = false;
  bool pressed = false;
  bool focusMark = false;
  bool dropMark = false;
};

/// Paints a button. The stored colour fills it and stays as it is; states show at the edge alone.
void paintKey(QPainter& painter, const QRect& area, const KeyLook& look, CaptionLayout& caption,
              const QColor& accent);

}  // namespace forms::qt
