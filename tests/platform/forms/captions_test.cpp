// On the real screens the captions of command buttons are painted completely and inside the button;
// keys shorten captions that are too long. Runs once for each font set, kind of hinting and scale.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QPaintEngine>
#include <QWidget>
#include <cstdlib>

#include "support/Shop.h"

namespace {

/// Records the texts that are painted on it.
class TextEngine : public QPaintEngine {
 public:
  TextEngine() : QPaintEngine(AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState& now) override {
    if ((now.state() & DirtyTransform) != 0) transform_ = now.transform();
  }
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPath(const QPainterPath&) override {}
  void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    texts.append(item.text());
    const QPointF from = transform_.map(at);
    bounds |= QRectF(from, QSizeF(item.width() * transform_.m11(), 0.1));
  }
  Type type() const override { return User; }

  QStringList texts;
  QRectF bounds;  ///< of the base lines of all texts

 private:
  QTransform transform_;
};

class TextDevice : public QPaintDevice {
 public:
  explicit TextDevice(QSize size) : size_(size) {}
  QPaintEngine* paintEngine() const override { return &engine; }
  mutable TextEngine engine;

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
        return size_.width();
      case PdmHeight:
        return size_.height();
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      case PdmDepth:
        return 32;
      case PdmDevicePixelRatio:
      case PdmNumColors:
        return 1;
      default:
        return 96;
    }
  }

 private:
  QSize size_;
};

/// The texts that are painted on a button, line by line. Fails where a text leaves the button.
QStringList painted(QWidget& button) {
  TextDevice device(button.size());
  button.render(&device);
  const QRectF bounds = device.engine.bounds;
  EXPECT_TRUE(bounds.isNull() || QRectF(button.rect()).contains(bounds))
      << button.accessibleName().toStdString();
  QStringList texts;
  for (const QString& text : device.engine.texts) texts.append(text.trimmed());
  return texts;
}

int checkCommands(const support::WindowDriver& user) {
  int checked = 0;
  for (auto* button : user.window().findChildren<QAbstractButton*>()) {
    const bool isCommand = button->isVisible() && button->objectName().startsWith("cmd");
    if (!isCommand) continue;
    EXPECT_EQ(painted(*button).join(' '), button->accessibleName());
    ++checked;
  }
  return checked;
}

std::string line(int key, const std::string& caption) {
  return support::lineOf(
      {.key = key, .product = "1", .caption = caption, .back = support::kWhite, .font = 0});
}

TEST(Captions, CommandsShowFullCaptionsAndKeysHyphenateAndShortenLongOnes) {
  support::Shop shop;
  {
    support::WindowDriver user = shop.open("frmMain");
    EXPECT_EQ(checkCommands(user), 8);
    user.click("cmdCopy");
    EXPECT_EQ(painted(user.control("cmdCopy")).join(' '), "STOP COPY");
    int onSheet = 0;
    support::soon([&] {
      support::WindowDriver sheet("frmAddPlu");
      onSheet = checkCommands(sheet);
      sheet.click("cmdClose");
    });
    user.doubleClick("MyButton1(0)");
    EXPECT_EQ(onSheet, 2);
  }
  shop.folder.write("Posdata/Posconfig.ini", "[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=1\r\n");
  std::vector<std::string> lines;
  for (int key = 0; key < 108; ++key) lines.push_back(line(key, ""));
  lines[0] = line(0, "Mayonnaise");
  lines[1] = line(1, "Ploughman's");
  lines[2] = line(2, "Decaffeinated");
  lines[3] = line(3, "Supercalifragilisticexpialidocious");
  lines[4] = line(4, "Sourdough and rosemary loaf sliced large from the bakery next to the church");
  shop.folder.write("Posdata/FastMovers.txt", support::layoutOf(lines));
  shop.newRun();
  const support::WindowDriver user = shop.open("frmMainBig");
  EXPECT_EQ(checkCommands(user), 6);

  const auto onKey = [&](int key) { return painted(user.control(support::key(key))); };
  // With Arial-compatible fonts the longest words of typical product names are not hyphenated.
  if (std::getenv("ARIAL_COMPATIBLE_FONTS") != nullptr) {
    for (const int key : {0, 1, 2}) EXPECT_EQ(onKey(key).size(), 1) << key;
  }
  const QStringList longWord = onKey(3);
  EXPECT_GT(longWord.size(), 1);
  for (const QString& part : longWord.first(longWord.size() - 1))
    EXPECT_TRUE(part.endsWith('-')) << part.toStdString();
  EXPECT_EQ(longWord.join("").remove('-'), "Supercalifragilisticexpialidocious");
  EXPECT_TRUE(onKey(4).last().endsWith(QChar(0x2026))) << onKey(4).join('|').toStdString();
}

}  // namespace
