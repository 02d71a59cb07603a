#include "core/clipboard/background_file_writer.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <unistd.h>

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

// The names (without a dot, unlike temporaries) of the files put in place in
// `folder`, in the order they landed.
class LandingOrder {
public:
    explicit LandingOrder(const QString &folder)
        : m_fd(inotify_init1(IN_NONBLOCK))
    {
        // A new file is linked in place, an existing one replaced by a rename.
        inotify_add_watch(m_fd, QFile::encodeName(folder).constData(), IN_CREATE | IN_MOVED_TO);
    }
    ~LandingOrder() { ::close(m_fd); }

    QStringList names() const
    {
        QStringList names;
        alignas(inotify_event) char buffer[4096];
        ssize_t size = 0;
        while ((size = ::read(m_fd, buffer, sizeof buffer)) > 0) {
            for (ssize_t at = 0; at < size;) {
                const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
                const QString name = QString::fromUtf8(event->name);
                if (!name.contains(u'.'))
                    names.append(name);
                at += ssize_t(sizeof(inotify_event)) + event->len;
            }
        }
        return names;
    }

private:
    int m_fd;
};

TEST(BackgroundFileWriter, aRewrittenFileLandsAfterEverythingAskedForBeforeIt)
{
    QTemporaryDir dir;
    const LandingOrder order(dir.path());
    BackgroundFileWriter writer;
    // Keeps the thread busy while the rest is queued.
    writer.write(dir.filePath(QStringLiteral("slow")), QByteArray(16 << 20, 'x'));
    writer.write(dir.filePath(QStringLiteral("history")), "names nothing");
    writer.write(dir.filePath(QStringLiteral("picture")), "pixels");
    writer.write(dir.filePath(QStringLiteral("history")), "names the picture");
    EXPECT_EQ(writer.pending(dir.filePath(QStringLiteral("history"))), QByteArray("names the picture"));
    writer.waitForIdle();
    EXPECT_EQ(
        order.names(), (QStringList{QStringLiteral("slow"), QStringLiteral("picture"), QStringLiteral("history")}));
    EXPECT_EQ(writer.pending(dir.filePath(QStringLiteral("history"))), std::nullopt);
    EXPECT_EQ(contents(dir.filePath(QStringLiteral("history"))), QByteArray("names the picture"));
}

} // namespace
} // namespace tessary
