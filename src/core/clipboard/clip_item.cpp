#include "core/clipboard/clip_item.h"

#include "core/json/strict_json.h"

#include <QJsonArray>
#include <QLocale>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace tessary {

namespace {

constexpr int titleLength = 140;
constexpr qsizetype imageNameDigits = 24;

bool isNewline(char16_t c)
{
    switch (c) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case u'\u0085':
    case u'\u2028':
    case u'\u2029':
        return true;
    default:
        return false;
    }
}

bool isHorizontalSpace(QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; }

QStringView firstLine(QStringView text)
{
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = start;
        while (end < text.size() && !isNewline(text[end].unicode()))
            ++end;
        if (end > start)
            return text.sliced(start, end - start);
        start = end + 1;
    }
    return {};
}

QStringView trimmedHorizontally(QStringView line)
{
    qsizetype begin = 0;
    qsizetype end = line.size();
    while (begin < end && isHorizontalSpace(line[begin]))
        ++begin;
    while (end > begin && isHorizontalSpace(line[end - 1]))
        --end;
    return line.sliced(begin, end - begin);
}

// The first `count` grapheme clusters followed by "…", or the line itself when it is not longer.
QString cutToGraphemes(QStringView line, int count)
{
    // Fewer code units than clusters allowed: no need to count.
    if (line.size() <= count)
        return line.toString();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line.data(), line.size());
    int clusters = 0;
    qsizetype cut = -1;
    while (finder.toNextBoundary() != -1) {
        ++clusters;
        if (clusters == count)
            cut = finder.position();
        if (clusters > count)
            return line.first(cut).toString() + u'…';
    }
    return line.toString();
}

// "/tmp/dir/" names "dir"; "/" names itself.
QString lastPathComponent(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    if (path == u"/")
        return path.toString();
    return path.sliced(path.lastIndexOf(u'/') + 1).toString();
}

QString filesTitle(const QStringList &paths)
{
    QStringList names;
    names.reserve(paths.size());
    for (const QString &path : paths)
        names.append(lastPathComponent(path));
    if (names.size() <= 2)
        return names.join(QStringLiteral(", "));
    return names[0] + QStringLiteral(", ") + names[1] + QStringLiteral(" and ") + QString::number(names.size() - 2)
        + QStringLiteral(" more");
}

// A member that may be absent or null; present but mistyped is an error.
template <typename T, typename Read>
bool readOptional(const QJsonObject &object, const char *name, Read read, std::optional<T> &out)
{
    const QJsonValue value = object.value(QLatin1String(name));
    if (value.isUndefined() || value.isNull())
        return true;
    out = read(object, name);
    return out.has_value();
}

const char *escapeFor(unsigned char c)
{
    switch (c) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return c < 0x20 ? "" : nullptr;
    }
}

void appendJsonString(QByteArray &out, const QString &text)
{
    static constexpr char hex[] = "0123456789abcdef";
    const QByteArray utf8 = text.toUtf8();
    out += '"';
    qsizetype run = 0;
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        const char *escape = escapeFor(c);
        if (!escape)
            continue;
        out.append(utf8.constData() + run, i - run);
        run = i + 1;
        if (*escape) {
            out += escape;
        } else {
            const char control[] = {'\\', 'u', '0', '0', hex[c >> 4], hex[c & 0xf]};
            out.append(control, sizeof control);
        }
    }
    out.append(utf8.constData() + run, utf8.size() - run);
    out += '"';
}

void appendMember(QByteArray &out, const char *name, const QString &value)
{
    out += ",\"";
    out += name;
    out += "\":";
    appendJsonString(out, value);
}

// Written by hand: the history is rewritten on every copy, and building
// QJsonObjects for a long history costs several times more.
void appendJson(QByteArray &out, const ClipItem &item)
{
    out += "{\"id\":\"";
    out += item.id.toByteArray(QUuid::WithoutBraces).toUpper();
    out += "\",\"kind\":\"";
    out += rawValue(item.kind).toLatin1();
    out += '"';
    if (item.text)
        appendMember(out, "text", *item.text);
    if (item.imageFile)
        appendMember(out, "imageFile", *item.imageFile);
    if (item.files) {
        out += ",\"files\":[";
        for (qsizetype i = 0; i < item.files->size(); ++i) {
            if (i > 0)
                out += ',';
            appendJsonString(out, item.files->at(i));
        }
        out += ']';
    }
    out += ",\"date\":";
    out += QByteArray::number(StrictJson::secondsSinceReferenceDate(item.date), 'g', QLocale::FloatingPointShortest);
    out += ",\"pinned\":";
    out += item.pinned ? "true" : "false";
    if (item.sourceApp)
        appendMember(out, "sourceApp", *item.sourceApp);
    appendMember(out, "hash", item.hash);
    out += ",\"pixelWidth\":";
    out += QByteArray::number(item.pixelWidth);
    out += ",\"pixelHeight\":";
    out += QByteArray::number(item.pixelHeight);
    out += '}';
}

} // namespace

QString rawValue(ClipItem::Kind kind)
{
    switch (kind) {
    case ClipItem::Kind::text:
        return QStringLiteral("text");
    case ClipItem::Kind::image:
        return QStringLiteral("image");
    case ClipItem::Kind::files:
        return QStringLiteral("files");
    }
    Q_UNREACHABLE();
    return {};
}

std::optional<ClipItem::Kind> clipKindFromRawValue(const QString &raw)
{
    for (auto kind : {ClipItem::Kind::text, ClipItem::Kind::image, ClipItem::Kind::files}) {
        if (rawValue(kind) == raw)
            return kind;
    }
    return std::nullopt;
}

QString ClipItem::title() const
{
    switch (kind) {
    case Kind::text:
        return cutToGraphemes(trimmedHorizontally(firstLine(text.value_or(QString()))), titleLength);
    case Kind::image:
        return QStringLiteral("Image ") + QString::number(pixelWidth) + u'×' + QString::number(pixelHeight);
    case Kind::files:
        return filesTitle(files.value_or(QStringList()));
    }
    Q_UNREACHABLE();
    return {};
}

QByteArray ClipItem::toJson() const
{
    QByteArray json;
    appendJson(json, *this);
    return json;
}

std::optional<ClipItem> ClipItem::fromJson(const QJsonObject &object)
{
    const auto id = StrictJson::uuid(object, "id");
    const auto kindWord = StrictJson::string(object, "kind");
    const auto kind = kindWord ? clipKindFromRawValue(*kindWord) : std::nullopt;
    const auto date = StrictJson::date(object, "date");
    const auto pinned = StrictJson::boolean(object, "pinned");
    const auto hash = StrictJson::string(object, "hash");
    const auto pixelWidth = StrictJson::integer(object, "pixelWidth");
    const auto pixelHeight = StrictJson::integer(object, "pixelHeight");
    if (!id || !kind || !date || !pinned || !hash || !pixelWidth || !pixelHeight)
        return std::nullopt;

    ClipItem item;
    if (!readOptional(object, "text", StrictJson::string, item.text)
        || !readOptional(object, "imageFile", StrictJson::string, item.imageFile)
        || !readOptional(object, "files", StrictJson::stringList, item.files)
        || !readOptional(object, "sourceApp", StrictJson::string, item.sourceApp))
        return std::nullopt;
    if (item.imageFile && !isImageFileName(*item.imageFile))
        return std::nullopt;
    item.id = *id;
    item.kind = *kind;
    item.date = *date;
    item.pinned = *pinned;
    item.hash = *hash;
    item.pixelWidth = *pixelWidth;
    item.pixelHeight = *pixelHeight;
    return item;
}

bool ClipItem::isImageFileName(const QString &name)
{
    const QLatin1String extension(".png");
    if (name.size() != imageNameDigits + extension.size() || !name.endsWith(extension))
        return false;
    return std::all_of(name.cbegin(), name.cbegin() + imageNameDigits,
        [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'); });
}

QByteArray ClipItem::listToJson(const QList<ClipItem> &items)
{
    QByteArray json;
    json.reserve(items.size() * 320);
    json += '[';
    for (const ClipItem &item : items) {
        if (json.size() > 1)
            json += ',';
        appendJson(json, item);
    }
    json += ']';
    return json;
}

std::optional<QList<ClipItem>> ClipItem::listFromJson(const QByteArray &json)
{
    const auto array = StrictJson::parseArray(json);
    if (!array)
        return std::nullopt;
    QList<ClipItem> items;
    items.reserve(array->size());
    for (const QJsonValue &value : *array) {
        if (!value.isObject())
            return std::nullopt;
        auto item = fromJson(value.toObject());
        if (!item)
            return std::nullopt;
        items.append(std::move(*item));
    }
    return items;
}

size_t qHash(const ClipItem &item, size_t seed) noexcept
{
    return qHashMulti(seed, item.id, static_cast<int>(item.kind), item.text.value_or(QString()), item.text.has_value(),
        item.imageFile.value_or(QString()), item.imageFile.has_value(), item.files.value_or(QStringList()),
        item.files.has_value(), item.date, item.pinned, item.sourceApp.value_or(QString()), item.sourceApp.has_value(),
        item.hash, item.pixelWidth, item.pixelHeight);
}

} // namespace tessary
