#pragma once

#include <QByteArray>
#include <QList>
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

// The system clipboard. Main thread only. Readers ask the owning application
// for data: call each at most once per change.
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

    // The type identifiers (MIME types on X11) offered for the current content.
    virtual QStringList types() const = 0;
    // File URLs only, in pasteboard order; empty when there are none.
    virtual QList<QUrl> fileUrls() const = 0;
    // The plain text, when the content offers one.
    virtual std::optional<QString> string() const = 0;
    // The content's picture as PNG, when it offers one that decodes. Decoding
    // and encoding a large picture take long, so platforms do them away from
    // the main thread and call `done` there later; a platform may also call
    // it before returning. A picture too large to decode gives none.
    virtual void readImage(std::function<void(std::optional<PasteboardImage>)> done) = 0;

    virtual void clear() = 0;
    virtual void writeString(const QString &text) = 0;
    // Writes nothing when `png` is not a PNG picture.
    virtual void writeImage(const QByteArray &png) = 0;
    virtual void writeFileUrls(const QList<QUrl> &urls) = 0;
};

} // namespace tessary
