#pragma once

#include "core/platform/file_search_backend.h"

#include <QList>

namespace tessary {

// A file index the test answers by hand, in any order, late answers included.
class FakeFileSearchBackend final : public FileSearchBackend {
public:
    struct Search {
        QString text;
        std::function<void(QStringList)> finished;
        bool stopped = false;
    };

    void start(const QString &text, std::function<void(QStringList paths)> finished) override;
    void stop() override;

    // Calls back search `index` (in start order) even when it was stopped, as a
    // racing backend might.
    void deliver(int index, const QStringList &paths);

    const QList<Search> &searches() const { return m_searches; }

private:
    QList<Search> m_searches;
};

} // namespace tessary
