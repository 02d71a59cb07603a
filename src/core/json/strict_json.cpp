#include "core/json/strict_json.h"

#include <QJsonDocument>
#include <QTimeZone>

#include <cmath>
#include <limits>

namespace tessary::StrictJson {

namespace {

const QDateTime &referenceDate()
{
    static const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
    return reference;
}

QJsonValue member(const QJsonObject &object, const char *name) { return object.value(QLatin1String(name)); }

} // namespace

std::optional<QString> string(const QJsonObject &object, const char *name)
{
    const QJsonValue value = member(object, name);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> boolean(const QJsonObject &object, const char *name)
{
    const QJsonValue value = member(object, name);
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> number(const QJsonObject &object, const char *name)
{
    const QJsonValue value = member(object, name);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<qint64> integer(const QJsonObject &object, const char *name)
{
    const auto value = number(object, name);
    constexpr double limit = 9007199254740992.0; // 2^53: beyond this doubles skip integers
    if (!value || std::floor(*value) != *value || std::abs(*value) > limit)
        return std::nullopt;
    return static_cast<qint64>(*value);
}

std::optional<QStringList> stringList(const QJsonObject &object, const char *name)
{
    const QJsonValue value = member(object, name);
    if (!value.isArray())
        return std::nullopt;
    QStringList list;
    const QJsonArray items = value.toArray();
    for (const QJsonValue &item : items) {
        if (!item.isString())
            return std::nullopt;
        list.append(item.toString());
    }
    return list;
}

std::optional<QUuid> uuid(const QJsonObject &object, const char *name)
{
    const auto text = string(object, name);
    return text ? parseUuid(*text) : std::nullopt;
}

std::optional<QDateTime> date(const QJsonObject &object, const char *name)
{
    const auto seconds = number(object, name);
    return seconds ? std::optional(fromSecondsSinceReferenceDate(*seconds)) : std::nullopt;
}

QString uuidText(const QUuid &id) { return id.toString(QUuid::WithoutBraces).toUpper(); }

std::optional<QUuid> parseUuid(const QString &text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid id = QUuid::fromString(text);
    if (id.isNull() && text != QLatin1String("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return id;
}

double secondsSinceReferenceDate(const QDateTime &date)
{
    return static_cast<double>(referenceDate().msecsTo(date)) / 1000.0;
}

QDateTime fromSecondsSinceReferenceDate(double seconds)
{
    return referenceDate().addMSecs(static_cast<qint64>(std::llround(seconds * 1000.0)));
}

std::optional<QJsonObject> parseObject(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}

std::optional<QJsonArray> parseArray(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return std::nullopt;
    return document.array();
}

QByteArray compact(const QJsonObject &object) { return QJsonDocument(object).toJson(QJsonDocument::Compact); }

QByteArray compact(const QJsonArray &array) { return QJsonDocument(array).toJson(QJsonDocument::Compact); }

} // namespace tessary::StrictJson
