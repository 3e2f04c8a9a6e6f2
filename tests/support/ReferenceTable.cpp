#include "support/ReferenceTable.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <stdexcept>

namespace support {

std::vector<QJsonObject> referenceRows(const QString& fileName) {
  QFile file(QStringLiteral(REFERENCE_TABLES "/") + fileName);
  if (!file.open(QIODevice::ReadOnly))
    throw std::runtime_error("no table " + fileName.toStdString());
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
