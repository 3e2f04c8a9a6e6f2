#include "support/ReferenceTable.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace support {

std::vector<QJsonObject> referenceRows(const QString& fileName) {
  QDirIterator places(QStringLiteral(TEST_DATA_DIR), {fileName}, QDir::Files,
                      QDirIterator::Subdirectories);
  if (!places.hasNext()) return {};
  QFile file(places.next());
  if (!file.open(QIODevice::ReadOnly)) return {};
  std::vector<QJsonObject> rows;
  for (const auto& value : QJsonDocument::fromJson(file.readAll()).array()) {
    const QJsonObject row = value.toObject();
    if (!row["doubtful"].toBool()) rows.push_back(row);
  }
  return rows;
}

std::u16string wideField(const QJsonObject& row, const char* name) {
  return row[QLatin1String(name)].toString().toStdU16String();
}

std::string bytesField(const QJsonObject& row, const char* name) {
  return QByteArray::fromHex(row[QLatin1String(name)].toString().toLatin1()).toStdString();
}

std::string idOf(const QJsonObject& row) {
  return row["id"].toString().toStdString();
}

}  // namespace support
