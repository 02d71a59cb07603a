#pragma once

#include <QDateTime>
#include <QFile>
#include <QProcessEnvironment>
#include <QString>

#include <initializer_list>
#include <utility>

namespace tessary {

// A home for a file indexer under test: files of known ages and XDG folders
// that keep the indexer's state out of the user's.
struct ScratchIndexHome {
    // Writes each named file into `folder`, last modified that many days ago.
    static void writeDatedFiles(const QString &folder, std::initializer_list<std::pair<QString, int>> ages)
    {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (const auto &[name, ageDays] : ages) {
            QFile file(folder + QLatin1Char('/') + name);
            if (file.open(QIODevice::WriteOnly)) {
                file.write("x");
                file.flush();
                file.setFileTime(now.addDays(-ageDays), QFileDevice::FileModificationTime);
            }
        }
    }

    // This process's environment with HOME and the XDG folders under `root`.
    static QProcessEnvironment environment(const QString &root)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), root + QStringLiteral("/home"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), root + QStringLiteral("/config"));
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), root + QStringLiteral("/cache"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), root + QStringLiteral("/data"));
        return environment;
    }
};

} // namespace tessary
