#pragma once

#include <QJsonObject>
#include <QString>
#include <string>
#include <vector>

namespace support {

/// The rows of a table of platform behaviour in tests/data/tables, without doubtful ones. Raises
/// std::runtime_error where there is no such table.
std::vector<QJsonObject> referenceRows(const QString& fileName);

/// The fields of a row.
std::u16string wideField(const QJsonObject& row, const char* name);
std::string bytesField(const QJsonObject& row, const char* name);  // hexadecimal in the table
std::string idOf(const QJsonObject& row);

}  // namespace support
