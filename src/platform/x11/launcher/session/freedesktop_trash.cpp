#include "platform/x11/launcher/session/freedesktop_trash.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStorageInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace tessary::FreedesktopTrash {

namespace {

// File systems whose mounts may hang a stat when the server is away.
bool isNetworkFileSystem(const QByteArray &type)
{
    static const QSet<QByteArray> network{"nfs", "nfs4", "cifs", "smb3", "smbfs", "9p", "afs", "ceph", "glusterfs",
        "fuse.sshfs", "fuse.rclone", "fuse.s3fs", "davfs", "fuse.davfs2"};
    return network.contains(type);
}

// $top/.Trash must be a real folder with the sticky bit, or it is not to be trusted.
bool isSharedTrashRoot(const QString &path)
{
    struct stat status { };
    return lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode)
        && (status.st_mode & S_ISVTX) != 0;
}

bool removeContents(const QString &folder)
{
    QDir dir(folder);
    if (!dir.exists())
        return true;
    bool complete = true;
    const QFileInfoList entries
        = dir.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir() && !entry.isSymLink()) {
            // Trashed folders may have been made read-only; their parents must let us delete.
            QFile::setPermissions(entry.filePath(),
                QFile::permissions(entry.filePath()) | QFileDevice::WriteOwner | QFileDevice::ExeOwner
                    | QFileDevice::ReadOwner);
            complete = removeContents(entry.filePath()) && complete;
            complete = dir.rmdir(entry.fileName()) && complete;
        } else {
            complete = dir.remove(entry.fileName()) && complete;
        }
    }
    return complete;
}

} // namespace

QStringList trashFolders(const QString &dataHome)
{
    QStringList folders;
    const QString home = dataHome + QStringLiteral("/Trash");
    if (QFileInfo(home).isDir())
        folders.append(home);
    const QString uid = QString::number(getuid());
    const QString homeRoot = QStorageInfo(dataHome).rootPath();
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady() || volume.isReadOnly() || volume.rootPath() == homeRoot
            || isNetworkFileSystem(volume.fileSystemType()))
            continue;
        const QString top = volume.rootPath() == QLatin1String("/") ? QString() : volume.rootPath();
        const QString shared = top + QStringLiteral("/.Trash");
        if (isSharedTrashRoot(shared) && QFileInfo(shared + QLatin1Char('/') + uid).isDir())
            folders.append(shared + QLatin1Char('/') + uid);
        const QString own = top + QStringLiteral("/.Trash-") + uid;
        if (QFileInfo(own).isDir() && !QFileInfo(own).isSymLink())
            folders.append(own);
    }
    return folders;
}

bool empty(const QStringList &trashFolders)
{
    bool complete = true;
    for (const QString &trash : trashFolders) {
        for (const char *part : {"files", "info", "expunged"})
            complete = removeContents(trash + QLatin1Char('/') + QLatin1String(part)) && complete;
        const QString sizes = trash + QStringLiteral("/directorysizes");
        complete = (!QFileInfo::exists(sizes) || QFile::remove(sizes)) && complete;
    }
    return complete;
}

} // namespace tessary::FreedesktopTrash
