#include "core/clipboard/relative_date_formatter.h"

#include <unicode/ureldatefmt.h>

#include <array>
#include <cstdlib>

namespace tessary {

namespace {

struct Unit {
    qint64 seconds;
    URelativeDateTimeUnit unit;
};

// Months and years by their average length: a list of copies needs no calendar arithmetic.
constexpr std::array units{
    Unit{31'556'952, UDAT_REL_UNIT_YEAR},
    Unit{2'629'746, UDAT_REL_UNIT_MONTH},
    Unit{604'800, UDAT_REL_UNIT_WEEK},
    Unit{86'400, UDAT_REL_UNIT_DAY},
    Unit{3'600, UDAT_REL_UNIT_HOUR},
    Unit{60, UDAT_REL_UNIT_MINUTE},
};

} // namespace

void RelativeDateFormatter::Closer::operator()(URelativeDateTimeFormatter *formatter) const
{
    ureldatefmt_close(formatter);
}

RelativeDateFormatter::RelativeDateFormatter(const QLocale &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    // ICU reads the C locale as POSIX English, whose plural rules give "1 seconds".
    const QByteArray localeId = locale.language() == QLocale::C ? QByteArray("en_US") : locale.name().toLatin1();
    m_formatter.reset(
        ureldatefmt_open(localeId.constData(), nullptr, UDAT_STYLE_LONG, UDISPCTX_CAPITALIZATION_NONE, &status));
    if (U_FAILURE(status))
        m_formatter.reset();
}

RelativeDateFormatter::~RelativeDateFormatter() = default;

QString RelativeDateFormatter::format(const QDateTime &date, const QDateTime &now) const
{
    if (!m_formatter)
        return {};
    const qint64 offset = now.secsTo(date);
    Unit chosen{1, UDAT_REL_UNIT_SECOND};
    for (const Unit &unit : units) {
        if (std::llabs(offset) >= unit.seconds) {
            chosen = unit;
            break;
        }
    }
    UErrorCode status = U_ZERO_ERROR;
    std::array<UChar, 128> buffer{};
    // Whole units toward zero, as "59 minutes ago" is not yet "1 hour ago".
    const int32_t length = ureldatefmt_format(m_formatter.get(), double(offset / chosen.seconds), chosen.unit,
        buffer.data(), int32_t(buffer.size()), &status);
    if (U_FAILURE(status))
        return {};
    return QString(reinterpret_cast<const QChar *>(buffer.data()), length);
}

} // namespace tessary
