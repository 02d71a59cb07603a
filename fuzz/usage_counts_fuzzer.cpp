#include "core/launcher/usage_tracker.h"
#include "core/platform/settings_key_value_store.h"
#include "core/settings/app_settings.h"
#include "fuzz/support/fuzz_target.h"

#include <QFile>
#include <QTemporaryDir>

// The counts and the settings record as read back from a settings file of any content.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    // A fresh name each time: QSettings caches files by name and modification time.
    static int runs = 0;
    const QString path = folder.filePath(QString::number(++runs) + QStringLiteral(".conf"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(tessary::fuzzBytes(data, size));
    }
    {
        tessary::SettingsKeyValueStore store(path);
        const tessary::UsageTracker usage(store);
        usage.topIDs();
        store.bytes(QLatin1String(tessary::AppSettings::storageKey));
        store.boolean(QLatin1String(tessary::AppSettings::unreadableKey));
    }
    QFile::remove(path);
    return 0;
}
