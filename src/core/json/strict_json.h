#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace tessary::StrictJson {

// Readers for strict decoding: a member that is missing or of another type
// yields nothing, and the caller treats the whole record as undecodable.
std::optional<QString> string(const QJsonObject &object, const char *name);
std::optional<bool> boolean(const QJsonObject &object, const char *name);
std::optional<double> number(const QJsonObject &object, const char *name);
// A JSON number with no fractional part that fits in 64 bits.
std::optional<qint64> integer(const QJsonObject &object, const char *name);
std::optional<QStringList> stringList(const QJsonObject &object, const char *name);
std::optional<QUuid> uuid(const QJsonObject &object, const char *name);
std::optional<QDateTime> date(const QJsonObject &object, const char *name);

// Upper-case, hyphenated, no braces: "E621E1F8-C36C-495A-93FC-0C247A3E6E5F".
QString uuidText(const QUuid &id);
std::optional<QUuid> parseUuid(const QString &text);

// Dates are stored as seconds since 2001-01-01 00:00:00 UTC.
double secondsSinceReferenceDate(const QDateTime &date);
QDateTime fromSecondsSinceReferenceDate(double seconds);

// The top-level object or array of a document, or nothing when it does not parse.
std::optional<QJsonObject> parseObject(const QByteArray &bytes);
std::optional<QJsonArray> parseArray(const QByteArray &bytes);

QByteArray compact(const QJsonObject &object);
QByteArray compact(const QJsonArray &array);

} // namespace tessary::StrictJson
