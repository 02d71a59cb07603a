#include "core/platform/settings_file_format.h"

#include <QStringTokenizer>

#include <algorithm>
#include <optional>

namespace tessary {

namespace {

const QLatin1String byteArrayPrefix("@ByteArray(");
const QLatin1String variantPrefix("@Variant(");
const QLatin1String generalSection("General");

int hexValue(char16_t c)
{
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

void appendCode(QString &out, char32_t code)
{
    if (code <= 0xFFFF)
        out += QChar(char16_t(code));
    else if (code <= 0x10FFFF)
        out += QString::fromUcs4(&code, 1);
    else
        out += QChar(QChar::ReplacementCharacter);
}

// "%XX" and "%UXXXX" stand for one character; a backslash stands for the slash of a group.
QString unescapedKey(QStringView key)
{
    QString out;
    for (qsizetype i = 0; i < key.size(); ++i) {
        const char16_t c = key[i].unicode();
        if (c == u'\\') {
            out += u'/';
            continue;
        }
        if (c == u'%') {
            const bool wide = i + 1 < key.size() && key[i + 1] == u'U';
            const qsizetype digits = wide ? 4 : 2;
            const qsizetype start = wide ? i + 2 : i + 1;
            char32_t code = 0;
            bool valid = start + digits <= key.size();
            for (qsizetype j = start; valid && j < start + digits; ++j) {
                const int digit = hexValue(key[j].unicode());
                valid = digit >= 0;
                code = code * 16 + char32_t(digit);
            }
            if (valid) {
                appendCode(out, code);
                i = start + digits - 1;
                continue;
            }
        }
        out += QChar(c);
    }
    return out;
}

QString escapedKey(QStringView key)
{
    QString out;
    for (const QChar c : key) {
        const char16_t u = c.unicode();
        if (u == u'/')
            out += u'\\';
        else if ((u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9') || u == u'.'
            || u == u'_' || u == u'-')
            out += c;
        else if (u <= 0xFF)
            out += u'%' + QString::number(u, 16).rightJustified(2, u'0').toUpper();
        else
            out += QStringLiteral("%U") + QString::number(u, 16).rightJustified(4, u'0').toUpper();
    }
    return out;
}

// A value after its "=": double quotes group, backslashes escape (C style,
// with greedy octal and hex), an unquoted ";" starts a comment, unquoted
// spaces at either end do not count.
QString unescapedValue(QStringView text)
{
    QString out;
    qsizetype kept = 0;
    bool quoted = false;
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    for (; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'"') {
            quoted = !quoted;
            kept = out.size();
            continue;
        }
        if (!quoted && c == u';')
            break;
        if (c != u'\\' || i + 1 == text.size()) {
            out += QChar(c);
            if (quoted || !QChar(c).isSpace())
                kept = out.size();
            continue;
        }
        const char16_t e = text[++i].unicode();
        switch (e) {
        case u'a':
            out += u'\a';
            break;
        case u'b':
            out += u'\b';
            break;
        case u'f':
            out += u'\f';
            break;
        case u'n':
            out += u'\n';
            break;
        case u'r':
            out += u'\r';
            break;
        case u't':
            out += u'\t';
            break;
        case u'v':
            out += u'\v';
            break;
        case u'x': {
            char32_t code = 0;
            while (i + 1 < text.size() && hexValue(text[i + 1].unicode()) >= 0)
                code = std::min<char32_t>(code * 16 + char32_t(hexValue(text[++i].unicode())), 0x110000);
            appendCode(out, code);
            break;
        }
        default:
            if (e >= u'0' && e <= u'7') {
                char32_t code = e - u'0';
                while (i + 1 < text.size() && text[i + 1] >= u'0' && text[i + 1] <= u'7')
                    code = std::min<char32_t>(code * 8 + char32_t(text[++i].unicode() - u'0'), 0x110000);
                appendCode(out, code);
            } else {
                out += QChar(e);
            }
        }
        kept = out.size();
    }
    out.truncate(kept);
    return out;
}

// Quoted, so no character needs more than its escape. A hex escape reads
// every hex digit after it, so a digit right after one is escaped too.
QString escapedValue(QStringView text)
{
    QString out = QStringLiteral("\"");
    bool afterHex = false;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        const bool hex = u < 0x20 || u == 0x7F || c.isSurrogate() || (afterHex && hexValue(u) >= 0);
        if (u == u'\\' || u == u'"') {
            out += u'\\';
            out += c;
        } else if (hex)
            out += QLatin1String("\\x") + QString::number(u, 16);
        else
            out += c;
        afterHex = hex;
    }
    return out + u'"';
}

// A group called "General" must not read back as the keys outside any group.
QString sectionName(const QString &group)
{
    if (group.isEmpty())
        return generalSection;
    const QString name = escapedKey(group);
    if (group.compare(generalSection, Qt::CaseInsensitive) != 0)
        return name;
    return u'%' + QString::number(group.front().unicode(), 16).toUpper() + name.sliced(1);
}

std::optional<QVariant> decodedValue(const QString &text)
{
    if (text.startsWith(byteArrayPrefix) && text.endsWith(u')'))
        return QVariant(text.sliced(byteArrayPrefix.size(), text.size() - byteArrayPrefix.size() - 1).toLatin1());
    if (text.startsWith(variantPrefix))
        return std::nullopt;
    if (text.startsWith(QLatin1String("@@")))
        return QVariant(text.sliced(1));
    return QVariant(text);
}

std::optional<QString> encodedValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QByteArray:
        return byteArrayPrefix + QString::fromLatin1(value.toByteArray()) + u')';
    case QMetaType::QString: {
        const QString text = value.toString();
        return text.startsWith(u'@') ? u'@' + text : text;
    }
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toString();
    default:
        return std::nullopt;
    }
}

} // namespace

QSettings::Format SettingsFileFormat::format()
{
    static const QSettings::Format registered = QSettings::registerFormat(QStringLiteral("conf"), read, write);
    return registered;
}

bool SettingsFileFormat::read(QIODevice &device, QSettings::SettingsMap &map)
{
    const QString text = QString::fromUtf8(device.readAll());
    QString section;
    for (QStringView line : QStringTokenizer(text, u'\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[')) {
            const qsizetype end = line.indexOf(u']');
            // Told apart before unescaping: "[%47eneral]" is a group called "General".
            const QStringView name = line.sliced(1, (end < 0 ? line.size() : end) - 1).trimmed();
            section = name.compare(generalSection, Qt::CaseInsensitive) == 0 ? QString() : unescapedKey(name) + u'/';
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0)
            continue;
        // As QSettings spells keys: no empty parts between slashes.
        const QString path = section + unescapedKey(line.first(equals).trimmed());
        const QString key = path.split(u'/', Qt::SkipEmptyParts).join(u'/');
        if (key.isEmpty())
            continue;
        if (const std::optional<QVariant> value = decodedValue(unescapedValue(line.sliced(equals + 1))))
            map.insert(key, *value);
    }
    return true;
}

bool SettingsFileFormat::write(QIODevice &device, const QSettings::SettingsMap &map)
{
    // Keys outside any group first, under [General]; then one section per group.
    QMap<QString, QString> sections;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        const std::optional<QString> value = encodedValue(it.value());
        if (!value)
            continue;
        const qsizetype slash = it.key().indexOf(u'/');
        const QString section = slash < 0 ? QString() : it.key().first(slash);
        const QString name = slash < 0 ? it.key() : it.key().sliced(slash + 1);
        sections[section] += escapedKey(name) + u'=' + escapedValue(*value) + u'\n';
    }
    QString text;
    for (auto it = sections.cbegin(); it != sections.cend(); ++it) {
        if (!text.isEmpty())
            text += u'\n';
        text += u'[' + sectionName(it.key()) + QStringLiteral("]\n") + it.value();
    }
    const QByteArray bytes = text.toUtf8();
    return device.write(bytes) == bytes.size();
}

} // namespace tessary
