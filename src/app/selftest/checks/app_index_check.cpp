#include "app/selftest/checks/app_index_check.h"

#include "core/launcher/app_index.h"
#include "platform/x11/launcher/desktop_entry_catalog.h"

#include <QTimer>

namespace tessary {

AppIndexCheck::AppIndexCheck(const SelfCheckContext &)
    : SelfCheck(QStringLiteral("Application index"))
{
}

AppIndexCheck::~AppIndexCheck() = default;

void AppIndexCheck::run(Done done)
{
    m_done = std::move(done);
    const auto catalog = std::make_shared<DesktopEntryCatalog>();
    m_index = std::make_unique<AppIndex>(catalog, catalog->defaultRoots());
    connect(m_index.get(), &AppIndex::scanned, this, [this] { finish(false); });
    QTimer::singleShot(timeoutMs, this, [this] { finish(true); });
    m_clock.start();
    m_index->refresh(true);
}

void AppIndexCheck::finish(bool timedOut)
{
    if (!m_done)
        return;
    const Done done = std::exchange(m_done, nullptr);
    const QString folders = m_index->folders().join(QStringLiteral(", "));
    if (timedOut) {
        done(CheckResult::warning(QStringLiteral("The scan of %1 took over %2 s.").arg(folders).arg(timeoutMs / 1000),
            QStringLiteral("Check these folders for slow or unreachable (network) mounts.")));
        return;
    }
    const qsizetype count = m_index->apps().size();
    const QString finding = QStringLiteral("%1 applications in %2 ms.").arg(count).arg(m_clock.elapsed());
    if (count == 0) {
        done(CheckResult::warning(QStringLiteral("No applications found in %1.").arg(folders),
            QStringLiteral("Install applications that come with a desktop entry, or set XDG_DATA_DIRS to include "
                           "where they are.")));
        return;
    }
    done(CheckResult::passed(finding));
}

} // namespace tessary
