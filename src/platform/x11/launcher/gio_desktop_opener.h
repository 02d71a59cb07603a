#pragma once

#include "core/platform/desktop_opener.h"

#include <QObject>

namespace tessary {

class StartupNotifier;

// Opens through GIO's default handlers and desktop entries; reveals through the
// file manager's org.freedesktop.FileManager1 service, falling back to opening
// the containing folder when no file manager answers. Applications whose entry
// asks for startup notification are announced through `notifier` when there
// is one, and get the announcement's id whether GIO runs them or activates
// them over D-Bus. Main thread only.
class GioDesktopOpener final : public QObject, public DesktopOpener {
    Q_OBJECT

public:
    explicit GioDesktopOpener(StartupNotifier *notifier = nullptr, QObject *parent = nullptr);

    bool openUrl(const QUrl &url) override;
    bool openFile(const QString &path) override;
    bool openApplication(const QString &path) override;
    // True when the file manager was asked; its refusal then opens the folder later.
    bool revealInFileManager(const QString &path) override;

private:
    StartupNotifier *m_notifier;
};

} // namespace tessary
