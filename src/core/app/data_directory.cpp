#include "core/app/data_directory.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace tessary {

namespace {

constexpr QFileDevice::Permissions ownerOnlyFolder
    = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
constexpr QFileDevice::Permissions ownerOnlyFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

} // namespace

QString DataDirectory::defaultPath()
{
#ifdef Q_OS_MACOS
    return QDir::homePath() + QStringLiteral("/Library/Application Support/Tessary");
#else
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty() || !QDir::isAbsolutePath(data))
        data = QDir::homePath() + QStringLiteral("/.local/share");
    return data + QStringLiteral("/Tessary");
#endif
}

bool DataDirectory::ensurePrivate(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isDir()) {
        // Created private from the start, so its contents are never exposed.
        if (!QDir().mkpath(info.absolutePath()) || !QDir().mkdir(path, ownerOnlyFolder))
            return QFileInfo(path).isDir() && QFile::setPermissions(path, ownerOnlyFolder);
    }
    return QFile::setPermissions(path, ownerOnlyFolder);
}

bool DataDirectory::writePrivateFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // Applies to the temporary file, before any byte lands in it.
    if (!file.setPermissions(ownerOnlyFile))
        return false;
    if (file.write(bytes) != bytes.size())
        return false;
    return file.commit();
}

} // namespace tessary
