#pragma once

#include "core/platform/pasteboard.h"

#include <QObject>

#include <memory>

class QClipboard;

namespace tessary {

class X11SelectionReader;

// The CLIPBOARD selection. Changes and writes go through Qt's clipboard, which
// watches the owner with XFixes: the change count advances on every change of
// owner and on each of this process's own writes, and the changed handler runs
// right then. The history's reads go to an X11SelectionReader and the pictures
// are decoded on Qt's global thread pool. Main thread only; needs a
// QGuiApplication (without an X connection nothing is read).
class X11Pasteboard final : public QObject, public Pasteboard {
    Q_OBJECT

public:
    explicit X11Pasteboard(QObject *parent = nullptr);

    qint64 changeCount() const override { return m_changeCount; }
    void setChangedHandler(std::function<void()> handler) override;
    ~X11Pasteboard() override;

    void readContent(
        const QSet<QString> &refusedTypes, std::function<void(std::optional<PasteboardContent>)> done) override;
    void readString(std::function<void(std::optional<QString>)> done) override;
    void clear() override;
    void writeString(const QString &text) override;
    void writeImage(const QByteArray &png) override;
    void writeFileUrls(const QList<QUrl> &urls) override;

private:
    void onClipboardChanged();
    // This process's own copy, which it serves itself.
    std::optional<QString> ownText() const;

    QClipboard *m_clipboard;
    qint64 m_changeCount = 0;
    std::function<void()> m_changed;
    std::unique_ptr<X11SelectionReader> m_reader;
};

} // namespace tessary
