#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHashFunctions>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace tessary {

// One clipboard history entry. Exactly the content field of its kind is set
// (`text`, `imageFile` or `files`); pixel sizes are 0 except for images.
struct ClipItem {
    enum class Kind { text, image, files };

    QUuid id;
    Kind kind = Kind::text;
    std::optional<QString> text;
    // Bare file name inside the store's "images" folder, see isImageFileName.
    std::optional<QString> imageFile;
    // Absolute paths, in pasteboard order.
    std::optional<QStringList> files;
    // Time of the latest copy of this content.
    QDateTime date;
    bool pinned = false;
    // Application id of the frontmost application at the time of the copy.
    std::optional<QString> sourceApp;
    // 64 lower-case hex digits identifying the content, see ClipboardStore::hash.
    QString hash;
    qint64 pixelWidth = 0;
    qint64 pixelHeight = 0;

    // The line under which the entry is listed: the first non-empty line of a
    // text (trimmed, at most 140 user-perceived characters plus "…"),
    // "Image W×H", or the file names ("a, b and 2 more").
    QString title() const;

    // Compact JSON object; absent optionals are left out.
    QByteArray toJson() const;
    // None when a required member is missing or mistyped, the id is not a
    // UUID, the kind is unknown or `imageFile` is not an image file name: a
    // name read from a file must never lead outside the images folder.
    // Null optionals count as absent.
    static std::optional<ClipItem> fromJson(const QJsonObject &object);

    // The history file form: a compact JSON array; a bad element spoils the whole list.
    static QByteArray listToJson(const QList<ClipItem> &items);
    static std::optional<QList<ClipItem>> listFromJson(const QByteArray &json);

    // The stored form of a picture's name: 24 lower-case hexadecimal digits and ".png".
    static bool isImageFileName(const QString &name);

    friend bool operator==(const ClipItem &, const ClipItem &) = default;
};

// The stored word of a kind ("text", "image", "files") and back.
QString rawValue(ClipItem::Kind kind);
std::optional<ClipItem::Kind> clipKindFromRawValue(const QString &raw);

size_t qHash(const ClipItem &item, size_t seed = 0) noexcept;

} // namespace tessary
