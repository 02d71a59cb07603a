#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <memory>

struct URelativeDateTimeFormatter;

namespace tessary {

// "5 minutes ago", "yesterday", "vor 3 Stunden": a date relative to now in the
// words of a locale, named where the language has a name for it. Building the
// ICU formatter is the costly part, so a list keeps one for all its rows.
class RelativeDateFormatter {
public:
    explicit RelativeDateFormatter(const QLocale &locale = QLocale());
    ~RelativeDateFormatter();
    RelativeDateFormatter(const RelativeDateFormatter &) = delete;
    RelativeDateFormatter &operator=(const RelativeDateFormatter &) = delete;

    // Counted in the largest whole unit (years down to seconds) the distance
    // reaches; empty when ICU has no data for the locale.
    QString format(const QDateTime &date, const QDateTime &now) const;

private:
    struct Closer {
        void operator()(URelativeDateTimeFormatter *formatter) const;
    };
    std::unique_ptr<URelativeDateTimeFormatter, Closer> m_formatter;
};

} // namespace tessary
