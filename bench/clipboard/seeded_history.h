#pragma once

#include "core/clipboard/clip_item.h"
#include "core/clipboard/clipboard_store.h"

#include <QBuffer>
#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>

namespace tessary {

// Writes a history of `entries` into `directory` ("clipboard.json" and
// "images/"), every tenth one a distinct 640×400 picture, the rest texts;
// newest first, one minute apart.
inline void seedHistory(const QString &directory, int entries)
{
    QDir().mkpath(directory + QStringLiteral("/images"));
    const QDateTime now = QDateTime::currentDateTimeUtc();
    QList<ClipItem> items;
    for (int i = 0; i < entries; ++i) {
        ClipItem item;
        item.id = QUuid::createUuid();
        item.date = now.addSecs(-60 * i);
        item.sourceApp = QStringLiteral("org.example.Editor");
        if (i % 10 == 5) {
            QImage picture(640, 400, QImage::Format_RGB32);
            picture.fill(QColor::fromHsv(i * 7 % 360, 160, 220));
            QByteArray png;
            QBuffer buffer(&png);
            buffer.open(QIODevice::WriteOnly);
            picture.save(&buffer, "PNG");
            item.kind = ClipItem::Kind::image;
            item.hash = ClipboardStore::hash(QStringLiteral("image"), png);
            // Named as the store names them: the history refuses other names.
            item.imageFile = item.hash.first(24) + QStringLiteral(".png");
            item.pixelWidth = 640;
            item.pixelHeight = 400;
            QFile file(directory + QStringLiteral("/images/") + *item.imageFile);
            if (file.open(QIODevice::WriteOnly))
                file.write(png);
        } else {
            item.text
                = QStringLiteral("Entry %1: notes about release %2, with a few words to search").arg(i).arg(i % 37);
            item.hash = ClipboardStore::hash(QStringLiteral("text"), *item.text);
        }
        items.append(item);
    }
    QFile history(directory + QStringLiteral("/clipboard.json"));
    if (history.open(QIODevice::WriteOnly))
        history.write(ClipItem::listToJson(items));
}

} // namespace tessary
