#include "core/launcher/launcher_result.h"

namespace tessary {

QString rawValue(LauncherResult::Kind kind)
{
    switch (kind) {
    case LauncherResult::Kind::app:
        return QStringLiteral("app");
    case LauncherResult::Kind::file:
        return QStringLiteral("file");
    case LauncherResult::Kind::calc:
        return QStringLiteral("calc");
    case LauncherResult::Kind::web:
        return QStringLiteral("web");
    case LauncherResult::Kind::system:
        return QStringLiteral("system");
    case LauncherResult::Kind::clipboard:
        return QStringLiteral("clipboard");
    case LauncherResult::Kind::snippet:
        return QStringLiteral("snippet");
    }
    return {};
}

} // namespace tessary
