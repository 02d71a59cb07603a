#pragma once

#include "core/platform/file_search_backend.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

namespace tessary {

// Finds files by name for the launcher, one search at a time: a new search
// cancels the previous one, so an old answer can never overwrite a newer one.
// Main thread only; the backend must outlive this object.
class FileSearcher : public QObject {
    Q_OBJECT

public:
    using Completion = std::function<void(const QList<QUrl> &urls)>;

    FileSearcher(FileSearchBackend &backend, QString home, QObject *parent = nullptr);
    ~FileSearcher() override;

    // Cancels any running search, then starts one; `completion` runs at most
    // once, later, with up to `limit` file URLs, most recently used first.
    void search(const QString &text, int limit, Completion completion);
    // The running search never calls back.
    void cancel();

    bool isSearching() const { return bool(m_completion); }
    int limit() const { return m_limit; }
    const QString &home() const { return m_home; }

    // False for hidden paths, the home Library folder, dependency folders and
    // the insides of application bundles.
    static bool isDeliverable(const QString &path, const QString &home);

private:
    void onFinished(quint64 search, const QStringList &paths);

    FileSearchBackend &m_backend;
    const QString m_home;
    Completion m_completion;
    int m_limit = 8;
    quint64 m_search = 0;
};

} // namespace tessary
