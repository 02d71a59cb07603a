#include "core/clipboard/background_file_writer.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace tessary {
namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

TEST(BackgroundFileWriter, appliesOperationsOnAPathInCallOrder)
{
    const struct {
        const char *name;
        std::function<void(BackgroundFileWriter &, const QString &)> operations;
        QByteArray result;
    } cases[] = {
        {"write then remove",
            [](BackgroundFileWriter &w, const QString &p) {
                w.write(p, "1");
                w.remove(p);
            },
            "<missing>"},
        {"remove then write",
            [](BackgroundFileWriter &w, const QString &p) {
                w.write(p, "1");
                w.remove(p);
                w.write(p, "2");
            },
            "2"},
        {"the last of several writes",
            [](BackgroundFileWriter &w, const QString &p) {
                for (const char *bytes : {"1", "2", "3", "4"})
                    w.write(p, bytes);
            },
            "4"},
        {"removing a missing file", [](BackgroundFileWriter &w, const QString &p) { w.remove(p); }, "<missing>"},
    };
    for (const auto &c : cases) {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("file"));
        BackgroundFileWriter writer;
        c.operations(writer, path);
        writer.waitForIdle();
        EXPECT_EQ(contents(path), c.result) << c.name;
    }
}

TEST(BackgroundFileWriter, finishesQueuedWritesBeforeItIsDestroyed)
{
    QTemporaryDir dir;
    {
        BackgroundFileWriter writer;
        for (int i = 0; i < 20; ++i)
            writer.write(dir.filePath(QString::number(i)), QByteArray::number(i));
    }
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(contents(dir.filePath(QString::number(i))), QByteArray::number(i));
}

} // namespace
} // namespace tessary
