#include "core/app/data_directory.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSaveFile>

#include <atomic>

Q_LOGGING_CATEGORY(lcDataDirectory, "tessary.files")

namespace tessary {

namespace {

constexpr QFileDevice::Permissions ownerOnlyFolder
    = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
constexpr QFileDevice::Permissions ownerOnlyFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

const QLatin1String unreadableInfix(".unreadable-");
// The stamp of an unreadable copy; a second copy within a second adds milliseconds.
const QLatin1String unreadableStamp(R"(unreadable-\d{8}-\d{6}(-\d{3})?)");

// A file system that ignores permissions refuses them on every file; one line says so.
void warnPermissionsOnce(const QString &path)
{
    static std::atomic_flag warned;
    if (!warned.test_and_set())
        qCWarning(lcDataDirectory) << "cannot make" << path << "private; its file system may not support permissions";
}

bool isUnreadableStamp(QStringView text)
{
    static const QRegularExpression stamp(u'^' + unreadableStamp + u'$');
    return stamp.match(text).hasMatch();
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

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
    if (!QFileInfo(path).isDir()) {
        // Created private from the start, so its contents are never exposed.
        if (!QDir().mkpath(QFileInfo(path).absolutePath()) || !QDir().mkdir(path, ownerOnlyFolder)) {
            if (!QFileInfo(path).isDir())
                return false;
        }
    }
    if (!QFile::setPermissions(path, ownerOnlyFolder))
        warnPermissionsOnce(path);
    return true;
}

bool DataDirectory::writePrivateFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // Applies to the temporary file, before any byte lands in it.
    if (!file.setPermissions(ownerOnlyFile))
        warnPermissionsOnce(path);
    if (file.write(bytes) != bytes.size())
        return false;
    return file.commit();
}

void DataDirectory::makePrivate(const QString &path)
{
    if (!QFile::setPermissions(path, ownerOnlyFile))
        warnPermissionsOnce(path);
}

std::optional<QString> DataDirectory::keepUnreadableCopy(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    QDir folder = info.absoluteDir();
    // The stamp sorts by age; the newest copy comes first.
    QStringList copies = folder.entryList(
        {info.fileName() + unreadableInfix + u'*'}, QDir::Files | QDir::Hidden, QDir::Name | QDir::Reversed);
    // Only finished copies: a temporary left by an interrupted one is no copy.
    const qsizetype stampStart = info.fileName().size() + 1;
    copies.removeIf(
        [stampStart](const QString &name) { return !isUnreadableStamp(QStringView(name).sliced(stampStart)); });
    if (!copies.isEmpty() && contents(folder.filePath(copies.first())) == bytes)
        return folder.filePath(copies.first());
    const QDateTime now = QDateTime::currentDateTimeUtc();
    QString copy = folder.filePath(info.fileName() + unreadableInfix + now.toString(QStringLiteral("yyyyMMdd-HHmmss")));
    if (QFile::exists(copy))
        copy += now.toString(QStringLiteral("-zzz"));
    if (!writePrivateFile(copy, bytes))
        return std::nullopt;
    copies.removeAll(QFileInfo(copy).fileName());
    for (qsizetype i = keptCopies - 1; i < copies.size(); ++i)
        folder.remove(copies.at(i));
    return copy;
}

void DataDirectory::removeTemporaries(const QString &folder)
{
    // QSaveFile's temporaries (where the file system has no unnamed ones): the
    // target's name and a dot followed by six random characters.
    static const QRegularExpression temporary(
        QStringLiteral(R"(^.+\.(json|png|)") + unreadableStamp + QStringLiteral(R"()\.[A-Za-z0-9]{6}$)"));
    QDir dir(folder);
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        if (temporary.match(name).hasMatch() && !dir.remove(name))
            qCWarning(lcDataDirectory) << "cannot remove" << dir.filePath(name);
    }
}

} // namespace tessary
