#include "platform/forms/qt/CaptionLayout.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>
#include <QTextBoundaryFinder>
#include <QtMath>

namespace forms::qt {
namespace {

/// The least width of narrowed glyphs, in per cent of their own width.
constexpr int kMinGlyphWidthPercent = 80;
/// Lower bound for the area of one character, in square pixels: limits how much of a very long
/// caption is laid out.
constexpr int kMinGlyphArea = 4;

QTextOption centred(QTextOption::WrapMode wrap) {
  QTextOption option(Qt::AlignHCenter);
  option.setWrapMode(wrap);
  return option;
}

bool isBetweenWords(const QString& text, qsizetype at) {
  QTextBoundaryFinder boundaries(QTextBoundaryFinder::Line, text);
  boundaries.setPosition(at);
  return boundaries.isAtBoundary();
}

}  // namespace

void CaptionLayout::set(const QString& caption) {
  caption_ = caption;
  size_ = {};
}

void CaptionLayout::set(const QFont& font) {
  font_ = font;
  size_ = {};
}

/// The line pitch without leading: the font's size, in pixels.
qreal CaptionLayout::solidPitch() const {
  constexpr qreal kPointsPerInch = 72;
  const qreal dpi = QGuiApplication::primaryScreen()->logicalDotsPerInchY();
  return font_.pointSizeF() * dpi / kPointsPerInch;
}

bool CaptionLayout::tryLayOut(const QString& text, qreal narrowing, bool solid,
                              QTextOption::WrapMode wrap) {
  narrowing_ = narrowing;
  layout_.setText(text);
  layout_.setFont(font_);
  layout_.setTextOption(centred(wrap));
  layout_.setCacheEnabled(true);
  const qreal width = lineWidth(narrowing);
  const qreal least = solidPitch();
  bool wordsFit = true;
  layout_.beginLayout();
  while (layout_.lineCount() == 0 || layout_.lineCount() * least <= size_.height()) {
    QTextLine line = layout_.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    wordsFit = wordsFit && line.naturalTextWidth() <= width;
  }
  layout_.endLayout();

  const int lines = layout_.lineCount();
  const qreal natural = layout_.lineAt(0).height();
  const qreal pitch = solid && lines * natural > size_.height() ? qMin(natural, least) : natural;
  for (int i = 0; i < lines; ++i)
    layout_.lineAt(i).setPosition({0, i * pitch + qRound((pitch - natural) / 2)});
  height_ = lines * pitch;
  return wordsFit && height_ <= size_.height();
}

qsizetype CaptionLayout::lineLength(const QString& text, qreal width) const {
  QTextLayout layout(text, font_);
  layout.setTextOption(centred(QTextOption::WrapAtWordBoundaryOrAnywhere));
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(width);
  layout.endLayout();
  return line.textLength();
}

QString CaptionLayout::withLineBreaks(const QString& text, qreal narrowing) const {
  const QFontMetricsF metrics(font_);
  const qreal width = lineWidth(narrowing);
  const int mostLines = qMax(1, qFloor(size_.height() / solidPitch()));
  QString lines;
  QString rest = text;
  for (int line = 1;; ++line) {
    qsizetype length = lineLength(rest, width);
    if (length >= rest.size()) return lines + rest;
    if (line == mostLines) {
      rest.replace(QChar::LineSeparator, ' ');
      return lines + metrics.elidedText(rest, Qt::ElideRight, width);
    }
    if (!isBetweenWords(rest, length))
      length = lineLength(rest, width - metrics.horizontalAdvance('-'));
    QString part = rest.left(length);
    while (part.endsWith(' ') || part.endsWith(QChar::LineSeparator)) part.chop(1);
    lines += part;
    if (!isBetweenWords(rest, length)) lines += '-';
    lines += QChar::LineSeparator;
    rest.remove(0, length);
  }
}

void CaptionLayout::layOut(int reserve) {
  constexpr auto kWords = QTextOption::WordWrap;
  QString text = caption_.left(qsizetype{size_.width()} * size_.height() / kMinGlyphArea);
  text.replace("\r\n", QString(QChar::LineSeparator));
  text.replace('\r', QChar::LineSeparator);
  text.replace('\n', QChar::LineSeparator);

  reserve_ = 0;
  if (tryLayOut(text, 1, false, kWords)) return;
  reserve_ = reserve;
  if (tryLayOut(text, 1, false, kWords) || tryLayOut(text, 1, true, kWords)) return;

  if (tryLayOut(text, kMinGlyphWidthPercent / 100.0, true, kWords)) {
    int fitting = kMinGlyphWidthPercent;
    int tooWide = 100;
    while (tooWide - fitting > 1) {
      const int middle = (fitting + tooWide) / 2;
      (tryLayOut(text, middle / 100.0, true, kWords) ? fitting : tooWide) = middle;
    }
    tryLayOut(text, fitting / 100.0, true, kWords);
    return;
  }
  tryLayOut(withLineBreaks(text, kMinGlyphWidthPercent / 100.0), kMinGlyphWidthPercent / 100.0,
            true, QTextOption::NoWrap);
}

void CaptionLayout::paint(QPainter& painter, const QRect& area, int reserve) {
  if (caption_.isEmpty()) return;
  if (size_ != area.size()) {
    size_ = area.size();
    layOut(reserve);
  }
  const QPointF at(area.x() - reserve_, area.y() + qFloor((area.height() - height_) / 2));
  if (narrowing_ == 1) {
    layout_.draw(&painter, at);
    return;
  }
  painter.save();
  painter.translate(at);
  painter.scale(narrowing_, 1);
  layout_.draw(&painter, {});
  painter.restore();
}

}  // namespace forms::qt
