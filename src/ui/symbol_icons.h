#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

namespace tessary {

// Icons named by the system's symbol names ("rectangle.split.2x2",
// "doc.on.clipboard", …): the desktop theme's icon when it has one, else a
// small drawn picture, so an icon is never blank. Main thread only.
namespace SymbolIcons {

QIcon icon(const QString &symbol);
// The theme names tried for `symbol`, best first; empty when only drawn.
QStringList themeNames(const QString &symbol);
// The drawn picture alone, ignoring the theme.
QIcon drawn(const QString &symbol);

} // namespace SymbolIcons

} // namespace tessary
