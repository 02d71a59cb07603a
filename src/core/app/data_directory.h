#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tessary {

// The per-user folder holding the clipboard history and the snippets:
// ~/Library/Application Support/Tessary on macOS, $XDG_DATA_HOME/Tessary
// (default ~/.local/share/Tessary) elsewhere.
namespace DataDirectory {

// Unreadable copies kept per file; older ones are deleted.
constexpr int keptCopies = 3;

QString defaultPath();

// Creates `path` and its missing parents; `path` itself ends up readable by
// its owner only (0700), whatever the umask and whatever it was before. On
// file systems without Unix permissions (vfat, some network mounts) the
// folder is used as it is and the failure is logged once. False when it
// could not be created.
bool ensurePrivate(const QString &path);

// Replaces `path` atomically with `bytes`, readable and writable by its owner
// only (0600) whatever the umask; where permissions cannot be set the file
// is written all the same and that is logged once. False when anything else
// failed; the old file is then left as it was.
bool writePrivateFile(const QString &path, const QByteArray &bytes);

// Makes the existing file `path` readable and writable by its owner only
// (0600); where permissions cannot be set that is logged once.
void makePrivate(const QString &path);

// Keeps `bytes`, the content of `path` that could not be decoded, beside it
// as "<name>.unreadable-<UTC date and time>" (0600) before the caller falls
// back to an empty or default state and overwrites `path`. Nothing is
// written when the newest copy holds the same bytes; beyond `keptCopies` the
// oldest copies go. Returns where the bytes are kept, none when that failed.
std::optional<QString> keepUnreadableCopy(const QString &path, const QByteArray &bytes);

// Deletes the temporary files that atomic writes into `folder` leave behind
// when the process is killed mid-write. Only while no other process writes there.
void removeTemporaries(const QString &folder);

} // namespace DataDirectory

} // namespace tessary
