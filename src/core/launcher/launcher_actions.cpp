#include "core/launcher/launcher_actions.h"

#include "core/launcher/app_index.h"
#include "core/platform/desktop_opener.h"

#include <algorithm>

namespace tessary {

void LauncherActions::openThrough(DesktopOpener &opener, const AppIndex &index)
{
    open = [&opener, &index](const QUrl &url) {
        if (!url.isLocalFile()) {
            opener.openUrl(url);
            return;
        }
        const QList<AppEntry> &apps = index.apps();
        const bool isApp
            = std::any_of(apps.begin(), apps.end(), [&url](const AppEntry &app) { return app.url == url; });
        if (isApp)
            opener.openApplication(url.toLocalFile());
        else
            opener.openFile(url.toLocalFile());
    };
    reveal = [&opener](const QUrl &url) { opener.revealInFileManager(url.toLocalFile()); };
}

} // namespace tessary
