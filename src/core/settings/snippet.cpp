#include "core/settings/snippet.h"

#include "core/json/strict_json.h"

#include <QHashFunctions>
#include <QTimeZone>

#include <unicode/udat.h>

#include <memory>

namespace tessary {

namespace {

struct DateFormatCloser {
    void operator()(UDateFormat *format) const { udat_close(format); }
};

// `now` in the locale's style, in the system time zone; empty if ICU cannot format it.
QString formatted(const QDateTime &now, const QLocale &locale, UDateFormatStyle timeStyle, UDateFormatStyle dateStyle)
{
    UErrorCode status = U_ZERO_ERROR;
    const QByteArray localeId = locale.name().toLatin1();
    // Asked each time, so a change of the system's zone shows at once.
    const QString zone = QString::fromLatin1(QTimeZone::systemTimeZoneId());
    std::unique_ptr<UDateFormat, DateFormatCloser> format(udat_open(timeStyle, dateStyle, localeId.constData(),
        zone.isEmpty() ? nullptr : reinterpret_cast<const UChar *>(zone.utf16()), -1, nullptr, -1, &status));
    if (U_FAILURE(status))
        return {};
    UChar buffer[128];
    const int32_t length = udat_format(
        format.get(), static_cast<UDate>(now.toMSecsSinceEpoch()), buffer, std::size(buffer), nullptr, &status);
    if (U_FAILURE(status))
        return {};
    return QString(reinterpret_cast<const QChar *>(buffer), length);
}

} // namespace

QString Snippet::expanded(const QString &clipboard, const QDateTime &now, const QLocale &locale) const
{
    QString result = text;
    result.replace(QLatin1String("{datetime}"), formatted(now, locale, UDAT_SHORT, UDAT_MEDIUM));
    result.replace(QLatin1String("{date}"), formatted(now, locale, UDAT_NONE, UDAT_MEDIUM));
    result.replace(QLatin1String("{time}"), formatted(now, locale, UDAT_SHORT, UDAT_NONE));
    result.replace(QLatin1String("{clipboard}"), clipboard);
    return result;
}

QList<Snippet> Snippet::defaults()
{
    return {
        {QUuid::createUuid(), QStringLiteral("Today's date"), QStringLiteral("date"), QStringLiteral("{date}")},
        {QUuid::createUuid(), QStringLiteral("Email sign-off"), QStringLiteral("thanks"), QStringLiteral("Thanks,\n")},
    };
}

QJsonObject Snippet::toJson() const
{
    return {{QLatin1String("id"), StrictJson::uuidText(id)}, {QLatin1String("name"), name},
        {QLatin1String("keyword"), keyword}, {QLatin1String("text"), text}};
}

std::optional<Snippet> Snippet::fromJson(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    auto id = StrictJson::uuid(object, "id");
    auto name = StrictJson::string(object, "name");
    auto keyword = StrictJson::string(object, "keyword");
    auto text = StrictJson::string(object, "text");
    if (!id || !name || !keyword || !text)
        return std::nullopt;
    return Snippet{*id, *name, *keyword, *text};
}

size_t qHash(const Snippet &snippet, size_t seed)
{
    return qHashMulti(seed, snippet.id, snippet.name, snippet.keyword, snippet.text);
}

} // namespace tessary
