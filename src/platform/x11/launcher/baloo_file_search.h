#pragma once

#include "core/platform/file_search_backend.h"

#include <QObject>
#include <QString>

namespace tessary {

// File search through KDE's file index. The index is a database that only
// KDE's own library reads, and that library is built against another Qt
// major version, so its command-line client answers: one child process per
// search, names holding every typed word, newest modification first (the
// index's own order), cut off after a few seconds.
class BalooFileSearch final : public QObject, public FileSearchBackend {
    Q_OBJECT

public:
    static constexpr const char *service = "org.kde.baloo";

    // `program` is the index's search client; the default finds the installed one.
    explicit BalooFileSearch(QString home, QString program = searchProgram(), QObject *parent = nullptr);
    ~BalooFileSearch() override;
    BalooFileSearch(const BalooFileSearch &) = delete;
    BalooFileSearch &operator=(const BalooFileSearch &) = delete;

    // A client that fails or is missing answers with no paths.
    void start(const QString &text, std::function<void(QStringList paths)> finished) override;
    void stop() override;

    // The query for names holding every word of `text`; empty when it has no words.
    static QString nameQuery(const QString &text);
    static QString searchProgram();

private:
    void finish(const QByteArray &output, const std::function<void(QStringList)> &finished);

    const QString m_home;
    const QString m_program;
    // Context of the running search: deleting it silences every callback.
    QObject *m_search = nullptr;
};

} // namespace tessary
