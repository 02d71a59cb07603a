#pragma once

#include <QString>
#include <QStringList>

namespace tessary {

// The user's trash cans as the freedesktop.org Trash specification lays them
// out: $XDG_DATA_HOME/Trash and, on other local volumes, $top/.Trash/$uid and
// $top/.Trash-$uid. Works on the files themselves, so no GVfs is needed.
namespace FreedesktopTrash {

// The trash folders that exist for `dataHome` and the mounted local volumes.
QStringList trashFolders(const QString &dataHome);

// Deletes everything inside the trash folders' "files", "info" and
// "expunged" and their size cache. True when nothing was left behind. Blocks:
// call it off the main thread.
bool empty(const QStringList &trashFolders);

} // namespace FreedesktopTrash

} // namespace tessary
