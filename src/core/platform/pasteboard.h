#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

namespace tessary {

// A picture read from the pasteboard, re-encoded as PNG so that the same
// picture always yields the same bytes, whatever format its owner offered.
struct PasteboardImage {
    QByteArray png = {};
    qint64 pixelWidth = 0;
    qint64 pixelHeight = 0;
};

// What one change put on the pasteboard, as far as the history reads it.
struct PasteboardContent {
    // The type identifiers (MIME types and target names on X11).
    QStringList types = {};
    // File URLs only, in pasteboard order.
    QList<QUrl> fileUrls = {};
    // The plain text, when the content offers one.
    std::optional<QString> string = {};
    // The picture, read only when there are neither file URLs nor a text
    // with more than white space; none when it does not decode or is too
    // large to decode.
    std::optional<PasteboardImage> image = {};
};

// The system clipboard. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    // Increases on every change of content or owner, this process's own
    // writes included. Cheap: never talks to the owner.
    virtual qint64 changeCount() const = 0;
    // Called on the main thread after the change count increased, when the
    // platform reports changes; may also run synchronously inside a writer
    // below. Platforms that cannot report changes never call it.
    virtual void setChangedHandler(std::function<void()> handler) = 0;

    // Reads the current content for the history and calls `done` on the main
    // thread, later or before returning. Reading asks the owning application
    // and a picture takes long to decode, so platforms do both away from the
    // main thread. With a type in `refusedTypes` only the types are read.
    // None when nothing is offered, when the content is this process's own
    // write or when it changed hands during the read (that change is read
    // on its own).
    virtual void readContent(
        const QSet<QString> &refusedTypes, std::function<void(std::optional<PasteboardContent>)> done)
        = 0;
    // The plain text, for a single user action (never for watching the
    // clipboard): `done` runs on the main thread, later or before returning.
    // None when there is none.
    virtual void readString(std::function<void(std::optional<QString>)> done) = 0;

    virtual void clear() = 0;
    virtual void writeString(const QString &text) = 0;
    // Writes nothing when `png` is not a PNG picture.
    virtual void writeImage(const QByteArray &png) = 0;
    virtual void writeFileUrls(const QList<QUrl> &urls) = 0;
};

} // namespace tessary
