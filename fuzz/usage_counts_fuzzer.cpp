#include "core/launcher/usage_tracker.h"
#include "core/platform/settings_file_format.h"
#include "core/platform/settings_key_value_store.h"
#include "core/settings/app_settings.h"
#include "fuzz/support/fuzz_target.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

namespace {

QSettings::SettingsMap readBack(const QByteArray &text)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    QSettings::SettingsMap map;
    tessary::SettingsFileFormat::read(buffer, map);
    return map;
}

} // namespace

// The counts and the settings record as read back from a settings file of any
// content; whatever the file format reads, it writes and reads again unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = tessary::fuzzBytes(data, size);
    const QSettings::SettingsMap map = readBack(bytes);
    QBuffer written;
    written.open(QIODevice::WriteOnly);
    tessary::SettingsFileFormat::write(written, map);
    TESSARY_FUZZ_REQUIRE(readBack(written.data()) == map);

    static const QTemporaryDir folder;
    // A fresh name each time: QSettings caches files by name and modification time.
    static int runs = 0;
    const QString path = folder.filePath(QString::number(++runs) + QStringLiteral(".conf"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(bytes);
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
