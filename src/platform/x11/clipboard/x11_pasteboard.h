#pragma once

#include "core/platform/pasteboard.h"

#include <QObject>

class QClipboard;
class QMimeData;

namespace tessary {

// The CLIPBOARD selection through Qt's clipboard, which watches its owner
// with XFixes: the change count advances on every change of owner and on
// each of this process's own writes, and the changed handler runs right then.
// The type list is fetched once per change; the other readers fetch from the
// owner on each call. Main thread only; needs a QGuiApplication.
class X11Pasteboard final : public QObject, public Pasteboard {
    Q_OBJECT

public:
    explicit X11Pasteboard(QObject *parent = nullptr);

    qint64 changeCount() const override { return m_changeCount; }
    void setChangedHandler(std::function<void()> handler) override;
    QStringList types() const override;
    QList<QUrl> fileUrls() const override;
    std::optional<QString> string() const override;
    // Fetches the picture on the main thread; decodes and encodes it on Qt's global thread pool.
    void readImage(std::function<void(std::optional<PasteboardImage>)> done) override;
    void clear() override;
    void writeString(const QString &text) override;
    void writeImage(const QByteArray &png) override;
    void writeFileUrls(const QList<QUrl> &urls) override;

private:
    void onClipboardChanged();
    const QMimeData *content() const;

    QClipboard *m_clipboard;
    qint64 m_changeCount = 0;
    // The types of change m_typesChange; each question to Qt's clipboard costs round trips to the X server.
    mutable QStringList m_types;
    mutable qint64 m_typesChange = -1;
    std::function<void()> m_changed;
};

} // namespace tessary
