#include "core/clipboard/clip_item.h"

#include "core/json/strict_json.h"

#include <QJsonArray>
#include <QTextBoundaryFinder>

namespace tessary {

namespace {

constexpr int titleLength = 140;

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

QJsonObject ClipItem::toJson() const
{
    QJsonObject object{
        {QLatin1String("id"), StrictJson::uuidText(id)},
        {QLatin1String("kind"), rawValue(kind)},
        {QLatin1String("date"), StrictJson::secondsSinceReferenceDate(date)},
        {QLatin1String("pinned"), pinned},
        {QLatin1String("hash"), hash},
        {QLatin1String("pixelWidth"), pixelWidth},
        {QLatin1String("pixelHeight"), pixelHeight},
    };
    if (text)
        object.insert(QLatin1String("text"), *text);
    if (imageFile)
        object.insert(QLatin1String("imageFile"), *imageFile);
    if (files)
        object.insert(QLatin1String("files"), QJsonArray::fromStringList(*files));
    if (sourceApp)
        object.insert(QLatin1String("sourceApp"), *sourceApp);
    return object;
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
    item.id = *id;
    item.kind = *kind;
    item.date = *date;
    item.pinned = *pinned;
    item.hash = *hash;
    item.pixelWidth = *pixelWidth;
    item.pixelHeight = *pixelHeight;
    return item;
}

QByteArray ClipItem::listToJson(const QList<ClipItem> &items)
{
    QJsonArray array;
    for (const ClipItem &item : items)
        array.append(item.toJson());
    return StrictJson::compact(array);
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
