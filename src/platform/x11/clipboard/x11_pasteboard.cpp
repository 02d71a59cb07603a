#include "platform/x11/clipboard/x11_pasteboard.h"

#include "platform/x11/clipboard/canonical_png.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeData>

namespace tessary {

namespace {

const QString uriListType = QStringLiteral("text/uri-list");

// The image type to ask the owner for: PNG when offered, else the first one Qt decodes.
std::optional<QString> readableImageType(const QStringList &types)
{
    if (types.contains(QStringLiteral("image/png")))
        return QStringLiteral("image/png");
    static const QList<QByteArray> decodable = QImageReader::supportedMimeTypes();
    for (const QString &type : types) {
        if (type.startsWith(QStringLiteral("image/")) && decodable.contains(type.toLatin1()))
            return type;
    }
    return std::nullopt;
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
    const QMimeData *data = content();
    return data ? data->formats() : QStringList();
}

QList<QUrl> X11Pasteboard::fileUrls() const
{
    const QMimeData *data = content();
    if (!data || !data->hasFormat(uriListType))
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
    const QMimeData *data = content();
    if (!data || !data->hasText())
        return std::nullopt;
    return data->text();
}

std::optional<PasteboardImage> X11Pasteboard::image() const
{
    const QMimeData *data = content();
    if (!data)
        return std::nullopt;
    if (const auto type = readableImageType(data->formats()))
        return CanonicalPng::encode(QImage::fromData(data->data(*type)));
    // Our own write, still in process: Qt keeps it as an image object.
    if (data->hasImage())
        return CanonicalPng::encode(qvariant_cast<QImage>(data->imageData()));
    return std::nullopt;
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
    const QImage image = QImage::fromData(png, "PNG");
    if (image.isNull())
        return;
    auto *data = new QMimeData;
    data->setImageData(image);
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
