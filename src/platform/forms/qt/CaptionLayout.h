#pragma once

#include <QFont>
#include <QPainter>
#include <QString>
#include <QTextLayout>

namespace forms::qt {

/// Lays a caption out in an area, every line centred. No character of it is a mnemonic or markup.
/// A caption that doesn't fit is laid out again with each of these steps in turn: let lines extend
/// into a margin (`reserve`), omit the leading, narrow the glyphs, hyphenate words. The last line
/// is cut with "…" if there is still too much text.
class CaptionLayout {
 public:
  void set(const QString& caption);
  void set(const QFont& font);
  /// Paints the lines in the painter's pen. `reserve` is the extra width that they may use on
  /// either side.
  void paint(QPainter& painter, const QRect& area, int reserve);

 private:
  void layOut(int reserve);
  /// Breaks the text into lines and positions them. `narrowing` is the width factor of the glyphs;
  /// `solid` omits the leading where needed. Returns false when a word is wider than a line or the
  /// lines don't fit the height.
  bool tryLayOut(const QString& text, qreal narrowing, bool solid, QTextOption::WrapMode wrap);
  /// The text with its line breaks set, in at most as many lines as have room.
  QString withLineBreaks(const QString& text, qreal narrowing) const;
  qsizetype lineLength(const QString& text, qreal width) const;
  qreal lineWidth(qreal narrowing) const { return (size_.width() + 2 * reserve_) / narrowing; }
  qreal solidPitch() const;

  QString caption_;
  QFont font_;
  QTextLayout layout_;
  QSize size_;  ///< of the area, without the reserve; empty: not laid out yet
  int reserve_ = 0;
  qreal narrowing_ = 1;
  qreal height_ = 0;  ///< of all lines
};

}  // namespace forms::qt
