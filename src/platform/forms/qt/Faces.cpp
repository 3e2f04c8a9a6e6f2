#include "platform/forms/qt/Faces.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHash>
#include <QScreen>
#include <QSet>
#include <map>
#include <tuple>

#include "platform/forms/qt/WideText.h"

namespace forms::qt {
namespace {

/// The name without the foundry, which the toolkit adds where several foundries have the family:
/// "Nimbus Sans [urw]".
QString withoutFoundry(const QString& family) {
  const qsizetype tail = family.lastIndexOf(QStringLiteral(" ["));
  return tail > 0 && family.endsWith(']') ? family.left(tail) : family;
}

/// The machine's face names, found without regard to case.
const QHash<QString, QString>& installedFaces() {
  static const QHash<QString, QString> faces = [] {
    QHash<QString, QString> all;
    for (const QString& listed : QFontDatabase::families()) {
      const QString family = withoutFoundry(listed);
      all.insert(family.toCaseFolded(), family);
    }
    return all;
  }();
  return faces;
}

const QString& defaultFace() {
  static const QString face = [] {
    for (const char* name : {"Arial", "Liberation Sans", "Arimo", "Nimbus Sans", "Helvetica"}) {
      const auto found = installedFaces().find(QString::fromLatin1(name).toCaseFolded());
      if (found != installedFaces().end()) return *found;
    }
    // None is installed: use what the system's font matching selects for Arial.
    return withoutFoundry(QFontInfo(QFont(QStringLiteral("Arial"))).family());
  }();
  return face;
}

/// The logical density that `kTwipsPerPixel` implies: 1440 / 15 dots per inch.
constexpr double kScreenDpi = 96;

QString resolve(const QString& name) {
  return installedFaces().value(name.toCaseFolded(), defaultFace());
}

}  // namespace

const QFont& font(std::u16string_view face, double points, int weight) {
  using Request = std::tuple<QString, double, int>;
  static std::map<Request, QFont> fonts;
  static QHash<QString, QString> resolved;

  const QString name = toQt(face);
  auto family = resolved.find(name);
  if (family == resolved.end()) family = resolved.insert(name, resolve(name));

  const Request request(*family, points, weight);
  auto found = fonts.find(request);
  if (found == fonts.end()) {
    QFont font;
    font.setFamilies({*family});
    font.setPointSizeF(points * kScreenDpi /
                       QGuiApplication::primaryScreen()->logicalDotsPerInchY());
    font.setWeight(static_cast<QFont::Weight>(qBound(1, weight, 1000)));
    found = fonts.emplace(request, font).first;
  }
  return found->second;
}

}  // namespace forms::qt
