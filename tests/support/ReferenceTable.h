#pragma once

#include <QJsonObject>
#include <QString>
#include <string>
#include <vector>

namespace support {

/// The rows of a table of platform behaviour below the reference data, without those whose result
/// is in doubt. Empty where the reference data isn't there.
std::vector<QJsonObject> referenceRows(const QString& fileName);

/// The fields of a row.
std::u16string wideField(const QJsonObject& row, const char* name);
std::string bytesField(const QJsonObject& row, const char* name);  // hexadecimal in the table
std::string idOf(const QJsonObject& row);

}  // namespace support
