#include "app/selftest/checks/file_search_check.h"

#include "platform/x11/launcher/home_walk_file_search.h"

#include <QTimer>

namespace tessary {

FileSearchCheck::FileSearchCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("File search"))
    , m_context(context)
{
}

FileSearchCheck::~FileSearchCheck() = default;

void FileSearchCheck::run(Done done)
{
    m_done = std::move(done);
    m_backend = std::make_unique<HomeWalkFileSearch>(m_context.homePath);
    QTimer::singleShot(timeoutMs, this, [this] { finish(std::nullopt); });
    m_clock.start();
    // A name that matches nothing makes the search look at everything it would ever look at.
    m_backend->start(
        QStringLiteral("tessary-self-check-no-such-file"), [this](const QStringList &paths) { finish(paths.size()); });
}

void FileSearchCheck::finish(std::optional<qsizetype> found)
{
    if (!m_done)
        return;
    m_backend->stop();
    const Done done = std::exchange(m_done, nullptr);
    if (!found) {
        done(CheckResult::warning(QStringLiteral("The walk of %1 took over %2 s: file rows come late or not at all.")
                                      .arg(m_context.homePath)
                                      .arg(timeoutMs / 1000),
            QStringLiteral("Check the home folder for slow or unreachable (network) mounts.")));
        return;
    }
    done(CheckResult::passed(QStringLiteral("No file index: a walk of %1 answered in %2 ms.")
                                 .arg(m_context.homePath)
                                 .arg(m_clock.elapsed())));
}

} // namespace tessary
