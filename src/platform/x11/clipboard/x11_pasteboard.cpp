#include "platform/x11/clipboard/x11_pasteboard.h"

#include "platform/x11/clipboard/canonical_png.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeData>
#include <QThreadPool>

namespace tessary {

namespace {

const QString uriListType = QStringLiteral("text/uri-list");
// Qt lists every text target the owner offers (UTF8_STRING, STRING, …) under this name.
const QString textType = QStringLiteral("text/plain");
const QString pngType = QStringLiteral("image/png");
// Beyond this, decoding and re-encoding would hold gigabytes; such a picture is not recorded.
constexpr qint64 maxPixels = 64LL * 1024 * 1024;

// The image type to ask the owner for: PNG when offered, else the first one Qt decodes.
std::optional<QString> readableImageType(const QStringList &types)
{
    if (types.contains(pngType))
        return pngType;
    static const QList<QByteArray> decodable = QImageReader::supportedMimeTypes();
    for (const QString &type : types) {
        if (type.startsWith(QStringLiteral("image/")) && decodable.contains(type.toLatin1()))
            return type;
    }
    return std::nullopt;
}

// Reads the header first, so that an oversized picture costs nothing to refuse.
QImage decodeWithinLimit(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > maxPixels)
        return {};
    reader.setAllocationLimit(0);
    return reader.read();
}

} // namespace

X11Pasteboard::X11Pasteboard(QObject *parent)
    : QObject(parent)
    , m_clipboard(QGuiApplication::clipboard())
{
    connect(m_clipboard, &QClipboard::dataChanged, this, &X11Pasteboard::onClipboardChanged);
}

void X11Pasteboard::onClipboardChanged()
{
    ++m_changeCount;
    if (m_changed)
        m_changed();
}

void X11Pasteboard::setChangedHandler(std::function<void()> handler) { m_changed = std::move(handler); }

const QMimeData *X11Pasteboard::content() const { return m_clipboard->mimeData(QClipboard::Clipboard); }

QStringList X11Pasteboard::types() const
{
    if (m_typesChange != m_changeCount) {
        const QMimeData *data = content();
        m_types = data ? data->formats() : QStringList();
        m_typesChange = m_changeCount;
    }
    return m_types;
}

QList<QUrl> X11Pasteboard::fileUrls() const
{
    if (!types().contains(uriListType))
        return {};
    const QMimeData *data = content();
    if (!data)
        return {};
    QList<QUrl> files;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            files.append(url);
    }
    return files;
}

std::optional<QString> X11Pasteboard::string() const
{
    if (!types().contains(textType))
        return std::nullopt;
    const QMimeData *data = content();
    if (!data)
        return std::nullopt;
    return data->text();
}

void X11Pasteboard::readImage(std::function<void(std::optional<PasteboardImage>)> done)
{
    const QMimeData *data = content();
    QByteArray bytes;
    QImage own;
    if (data) {
        if (const auto type = readableImageType(types()))
            bytes = data->data(*type);
        else if (data->hasImage())
            // Our own write, still in process: Qt keeps it as an image object.
            own = qvariant_cast<QImage>(data->imageData());
    }
    if (bytes.isEmpty() && own.isNull()) {
        done(std::nullopt);
        return;
    }
    // The application object outlives the pool's tasks: its destructor waits for them.
    QThreadPool::globalInstance()->start([bytes = std::move(bytes), own = std::move(own), done = std::move(done)] {
        auto image = CanonicalPng::encode(own.isNull() ? decodeWithinLimit(bytes) : own);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [done, image = std::move(image)] { done(image); }, Qt::QueuedConnection);
    });
}

void X11Pasteboard::clear() { m_clipboard->clear(QClipboard::Clipboard); }

void X11Pasteboard::writeString(const QString &text)
{
    auto *data = new QMimeData;
    data->setText(text);
    m_clipboard->setMimeData(data, QClipboard::Clipboard);
}

void X11Pasteboard::writeImage(const QByteArray &png)
{
    // Served as it is: decoding a large picture here would stall the caller.
    QBuffer buffer;
    buffer.setData(png);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    if (!reader.canRead() || !reader.size().isValid())
        return;
    auto *data = new QMimeData;
    data->setData(pngType, png);
    m_clipboard->setMimeData(data, QClipboard::Clipboard);
}

void X11Pasteboard::writeFileUrls(const QList<QUrl> &urls)
{
    auto *data = new QMimeData;
    data->setUrls(urls);
    // File managers of GNOME descent paste files only from their own type.
    QByteArray gnome("copy");
    for (const QUrl &url : urls)
        gnome += '\n' + url.toEncoded();
    data->setData(QStringLiteral("x-special/gnome-copied-files"), gnome);
    m_clipboard->setMimeData(data, QClipboard::Clipboard);
}

} // namespace tessary
