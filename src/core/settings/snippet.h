#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QLocale>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessary {

// A named piece of text the launcher pastes when its keyword is typed.
struct Snippet {
    QUuid id;
    QString name;
    // What the user types in the launcher; may be empty.
    QString keyword;
    // May hold the placeholders {datetime}, {date}, {time} and {clipboard}.
    QString text;

    // `text` with "{datetime}", "{date}" and "{time}" replaced by `now` in the
    // locale's medium date and short time styles (system time zone), then
    // "{clipboard}" by `clipboard`, which is therefore never expanded itself.
    // Matching is exact and case-sensitive; other braces stay as they are.
    QString expanded(const QString &clipboard, const QDateTime &now, const QLocale &locale) const;

    // "Today's date" and "Email sign-off", each with a fresh id per call.
    static QList<Snippet> defaults();

    QJsonObject toJson() const;
    // Strict: "id" (a UUID), "name", "keyword" and "text" present as strings;
    // other members are ignored.
    static std::optional<Snippet> fromJson(const QJsonValue &value);

    friend bool operator==(const Snippet &, const Snippet &) = default;
};

size_t qHash(const Snippet &snippet, size_t seed = 0);

} // namespace tessary
