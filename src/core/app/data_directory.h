#pragma once

#include <QByteArray>
#include <QString>

namespace tessary {

// The per-user folder holding the clipboard history and the snippets:
// ~/Library/Application Support/Tessary on macOS, $XDG_DATA_HOME/Tessary
// (default ~/.local/share/Tessary) elsewhere.
namespace DataDirectory {

QString defaultPath();

// Creates `path` and its missing parents; `path` itself ends up readable by
// its owner only (0700), whatever the umask and whatever it was before.
// False when it could not be created.
bool ensurePrivate(const QString &path);

// Replaces `path` atomically with `bytes`, readable and writable by its owner
// only (0600) whatever the umask. False when anything failed; the old file
// is then left as it was.
bool writePrivateFile(const QString &path, const QByteArray &bytes);

} // namespace DataDirectory

} // namespace tessary
