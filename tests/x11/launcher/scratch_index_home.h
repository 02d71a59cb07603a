#pragma once

#include "core/platform/file_search_backend.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTest>

#include <initializer_list>
#include <optional>
#include <string>
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

    // The backend's answer to one search, none when it gives none in `waitMs`.
    static std::optional<QStringList> search(FileSearchBackend &backend, const QString &text, int waitMs = 60000)
    {
        std::optional<QStringList> answer;
        backend.start(text, [&answer](const QStringList &paths) { answer = paths; });
        static_cast<void>(QTest::qWaitFor([&answer] { return answer.has_value(); }, waitMs));
        return answer;
    }

    // Indexers index file by file, and a loaded machine slows their start
    // most: an answer counts once it holds `files` files, within a minute.
    static QStringList searchOnceIndexed(FileSearchBackend &backend, const QString &text, qsizetype files)
    {
        QStringList paths;
        for (const QDeadlineTimer deadline(60000); !deadline.hasExpired() && paths.size() < files;) {
            paths = search(backend, text, int(deadline.remainingTime())).value_or(QStringList());
            if (paths.size() < files)
                QTest::qWait(250);
        }
        return paths;
    }

    static std::string lines(const std::optional<QStringList> &paths)
    {
        return paths ? paths->join(QLatin1Char('\n')).toStdString() : std::string("(no answer)");
    }
};

} // namespace tessary
