#include "platform/fake/launcher/fake_application_catalog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tessary {

FakeApplicationCatalog::FakeApplicationCatalog(QStringList roots, Key key)
    : m_roots(std::move(roots))
    , m_key(key)
{
}

QString FakeApplicationCatalog::entrySuffix() const { return QStringLiteral(".app"); }

QString FakeApplicationCatalog::entryKey(const QString &, const QString &path) const
{
    return m_key == Key::path ? path : QFileInfo(path).fileName();
}

std::optional<QString> FakeApplicationCatalog::displayName(const QString &path) const
{
    const QDir bundle(path);
    if (bundle.exists(QStringLiteral("hidden")))
        return std::nullopt;
    QFile name(bundle.filePath(QStringLiteral("name")));
    if (name.open(QIODevice::ReadOnly))
        return QString::fromUtf8(name.readAll());
    return QFileInfo(path).completeBaseName();
}

QStringList FakeApplicationCatalog::otherNames(const QString &path) const
{
    QFile other(QDir(path).filePath(QStringLiteral("other")));
    if (!other.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(other.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString FakeApplicationCatalog::addApp(
    const QString &folder, const QString &fileName, const QString &name, bool hidden, const QStringList &otherNames)
{
    const QString path = folder + QLatin1Char('/') + fileName + QStringLiteral(".app");
    QDir().mkpath(path);
    if (!name.isEmpty()) {
        QFile file(path + QStringLiteral("/name"));
        if (file.open(QIODevice::WriteOnly))
            file.write(name.toUtf8());
    }
    if (!otherNames.isEmpty()) {
        QFile file(path + QStringLiteral("/other"));
        if (file.open(QIODevice::WriteOnly))
            file.write(otherNames.join(QLatin1Char('\n')).toUtf8());
    }
    if (hidden) {
        QFile file(path + QStringLiteral("/hidden"));
        if (file.open(QIODevice::WriteOnly))
            file.write("1");
    }
    return path;
}

} // namespace tessary
