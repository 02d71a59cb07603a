#include "platform/x11/clipboard/x11_pasteboard.h"

#include "platform/x11/clipboard/canonical_png.h"
#include "platform/x11/clipboard/x11_selection_reader.h"
#include "platform/x11/x11_connection.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeData>
#include <QPointer>
#include <QThreadPool>

#include <X11/Xlib.h>

namespace tessary {

namespace {

constexpr QLatin1String pngType("image/png");
// Beyond this, decoding and re-encoding would hold gigabytes; such a picture is not recorded.
constexpr qint64 maxPixels = 64LL * 1024 * 1024;

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

// Runs `answer` on the main thread; the application outlives the reader and the pool's tasks.
void onMainThread(std::function<void()> answer)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(answer), Qt::QueuedConnection);
}

} // namespace

X11Pasteboard::X11Pasteboard(QObject *parent)
    : QObject(parent)
    , m_clipboard(QGuiApplication::clipboard())
{
    connect(m_clipboard, &QClipboard::dataChanged, this, &X11Pasteboard::onClipboardChanged);
    if (X11Connection *x11 = X11Connection::instance())
        m_reader = std::make_unique<X11SelectionReader>(XDisplayString(x11->display()), x11->connection());
}

X11Pasteboard::~X11Pasteboard() = default;

void X11Pasteboard::onClipboardChanged()
{
    ++m_changeCount;
    if (m_changed)
        m_changed();
}

void X11Pasteboard::setChangedHandler(std::function<void()> handler) { m_changed = std::move(handler); }

void X11Pasteboard::readContent(
    const QSet<QString> &refusedTypes, std::function<void(std::optional<PasteboardContent>)> done)
{
    if (!m_reader) {
        done(std::nullopt);
        return;
    }
    using Outcome = X11SelectionReader::Outcome;
    // Runs on the reader's thread.
    m_reader->read(refusedTypes, X11SelectionReader::Want::everything,
        [self = QPointer(this), done = std::move(done)](Outcome outcome, X11SelectionReader::Raw raw) {
            const auto answer = [self, done](std::optional<PasteboardContent> content) {
                onMainThread([self, done, content = std::move(content)] {
                    if (self)
                        done(content);
                });
            };
            if (outcome != Outcome::read)
                return answer(std::nullopt);
            PasteboardContent content{.types = std::move(raw.targets),
                .fileUrls = std::move(raw.fileUrls),
                .string = std::move(raw.text),
                .image = std::nullopt};
            if (raw.imageBytes.isEmpty())
                return answer(std::move(content));
            QThreadPool::globalInstance()->start(
                [answer, content = std::move(content), bytes = std::move(raw.imageBytes)]() mutable {
                    QImage decoded = decodeWithinLimit(bytes);
                    bytes = QByteArray();
                    content.image = CanonicalPng::encode(std::move(decoded));
                    answer(std::move(content));
                });
        });
}

void X11Pasteboard::readString(std::function<void(std::optional<QString>)> done)
{
    if (!m_reader || m_clipboard->ownsClipboard())
        return done(ownText());
    using Outcome = X11SelectionReader::Outcome;
    m_reader->read({}, X11SelectionReader::Want::text,
        [self = QPointer(this), done = std::move(done)](Outcome outcome, X11SelectionReader::Raw raw) {
            onMainThread([self, done, outcome, text = std::move(raw.text)] {
                if (!self)
                    return;
                // Copied by this process after the read was asked for.
                if (outcome == Outcome::own)
                    return done(self->ownText());
                done(outcome == Outcome::read ? text : std::nullopt);
            });
        });
}

std::optional<QString> X11Pasteboard::ownText() const
{
    const QMimeData *data = m_clipboard->mimeData(QClipboard::Clipboard);
    if (!data || !data->hasText())
        return std::nullopt;
    return data->text();
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
    data->setData(QString(pngType), png);
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
