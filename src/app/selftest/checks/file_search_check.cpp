#include "app/selftest/checks/file_search_check.h"

#include "platform/x11/launcher/desktop_file_search_chain.h"

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
    m_chain = std::make_unique<DesktopFileSearchChain>(m_context.homePath);
    QTimer::singleShot(timeoutMs, this, [this] { finish(std::nullopt); });
    // Which index runs is asked of the bus first: a bus that does not answer
    // leaves the walk, as it does for the launcher.
    connect(m_chain.get(), &DesktopFileSearchChain::probeAnswered, this, &FileSearchCheck::search);
    QTimer::singleShot(probeTimeoutMs, this, &FileSearchCheck::search);
}

void FileSearchCheck::search()
{
    if (!m_done || m_clock.isValid())
        return;
    m_clock.start();
    // A name that matches nothing makes the search look at everything it would ever look at.
    m_chain->search().start(
        QStringLiteral("tessary-self-check-no-such-file"), [this](const QStringList &paths) { finish(paths.size()); });
}

void FileSearchCheck::finish(std::optional<qsizetype> found)
{
    if (!m_done)
        return;
    m_chain->search().stop();
    const Done done = std::exchange(m_done, nullptr);
    const QString source = m_chain->source();
    const bool walk = !m_chain->usesIndex();
    if (!found) {
        done(CheckResult::warning(QStringLiteral("A search by %1 took over %2 s: file rows come late or not at all.")
                                      .arg(source)
                                      .arg(timeoutMs / 1000),
            walk ? QStringLiteral("Check the home folder for slow or unreachable (network) mounts.")
                 : QStringLiteral("Check that the desktop's file indexer is running and has finished indexing.")));
        return;
    }
    const QString summary
        = walk ? QStringLiteral("No file index: %1 answered in %2 ms.") : QStringLiteral("%1 answered in %2 ms.");
    done(CheckResult::passed(summary.arg(source).arg(m_clock.elapsed())));
}

} // namespace tessary
