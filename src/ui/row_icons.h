#pragma once

#include "core/launcher/launcher_result.h"

#include <QHash>
#include <QIcon>
#include <QMimeDatabase>
#include <QString>

namespace tessary {

// The icon of a launcher row, never blank: an application's own icon (the
// desktop entry's Icon, a theme name or a file), a file's MIME type icon from
// the icon theme, else the row's symbol. Looked up once per path. Main thread.
class RowIcons {
public:
    QIcon icon(const LauncherResult &row);

    // The Icon value of the desktop entry at `path`, empty when it has none.
    static QString desktopEntryIcon(const QString &path);

private:
    QIcon forPath(const QString &path);

    QHash<QString, QIcon> m_byPath;
    QMimeDatabase m_mime;
};

} // namespace tessary
