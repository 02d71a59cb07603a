#pragma once

#include <QString>
#include <QUrl>

namespace tessary {

// Hands URLs, files and applications to the desktop's own handlers. Each call
// returns false when nothing could be started; nothing is shown to the user.
class DesktopOpener {
public:
    virtual ~DesktopOpener() = default;

    virtual bool openUrl(const QUrl &url) = 0;
    virtual bool openFile(const QString &path) = 0;
    // `path` is an application's bundle (macOS) or desktop entry (Linux).
    virtual bool openApplication(const QString &path) = 0;
    virtual bool revealInFileManager(const QString &path) = 0;
};

} // namespace tessary
