#include "fuzz/support/fuzz_target.h"
#include "platform/x11/launcher/desktop_entry_catalog.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("fuzzed.desktop"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(tessary::fuzzBytes(data, size));
    }
    if (const auto name = tessary::DesktopEntryCatalog().displayName(path))
        TESSARY_FUZZ_REQUIRE(!name->isNull());
    return 0;
}
