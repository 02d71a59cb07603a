#include "platform/x11/clipboard/x11_pasteboard.h"

#include "core/clipboard/clipboard_store.h"
#include "platform/x11/windows/x11_workspace.h"
#include "platform/x11/x11_connection.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

constexpr int waitMs = 5000;

// Runs xclip on the CLIPBOARD selection of the test display. A copying xclip
// leaves a child serving the selection; this process keeps serving its own
// selection while xclip reads it.
QByteArray xclip(const QStringList &args, const QByteArray &input = {})
{
    QProcess process;
    const bool copying = args.contains(QStringLiteral("-i"));
    if (copying)
        process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QStringLiteral("xclip"),
        QStringList{QStringLiteral("-display"), qEnvironmentVariable("DISPLAY"), QStringLiteral("-selection"),
            QStringLiteral("clipboard")}
            + args);
    if (!process.waitForStarted())
        return {};
    process.write(input);
    process.closeWriteChannel();
    if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, waitMs))
        return {};
    return copying ? QByteArray() : process.readAllStandardOutput();
}

QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

// A picture with distinct pixels, so that any re-encoding that alters them shows.
QImage gradient(int width, int height, QImage::Format format)
{
    QImage image(width, height, format);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    }
    image.setText(QStringLiteral("Software"), QStringLiteral("the copying application"));
    return image;
}

class X11ClipboardTest : public ::testing::Test {
protected:
    X11ClipboardTest()
        : m_store(m_dir.path(), m_pasteboard)
    {
        m_store.retentionDays = 0;
        m_store.startMonitoring();
    }

    bool waitForItems(qsizetype count)
    {
        return QTest::qWaitFor([&] { return m_store.items().size() == count; }, waitMs);
    }
    // Long enough for a change to be reported and for a timer poll besides.
    void settle() { QTest::qWait(2 * ClipboardStore::pollIntervalMs); }

    QTemporaryDir m_dir;
    X11Pasteboard m_pasteboard;
    ClipboardStore m_store;
};

TEST_F(X11ClipboardTest, everyCopyAdvancesTheChangeCountAndIsReportedAtOnce)
{
    int reports = 0;
    X11Pasteboard observed;
    observed.setChangedHandler([&] { ++reports; });
    const qint64 start = observed.changeCount();
    for (int i = 1; i <= 3; ++i) {
        xclip({QStringLiteral("-i")}, "same text");
        EXPECT_TRUE(QTest::qWaitFor([&] { return observed.changeCount() == start + i; }, waitMs))
            << "each new owner is a change, even with the same content";
        EXPECT_EQ(reports, i);
    }
    observed.writeString(QStringLiteral("ours"));
    EXPECT_EQ(observed.changeCount(), start + 4) << "our own write counts at once";
}

TEST_F(X11ClipboardTest, aCopiedTextIsRecordedExactly)
{
    const QString text = QStringLiteral("  héllo from xclip ✓\nsecond line ");
    xclip({QStringLiteral("-i")}, text.toUtf8());
    ASSERT_TRUE(waitForItems(1));
    const ClipItem &item = m_store.items().first();
    EXPECT_EQ(item.kind, ClipItem::Kind::text);
    EXPECT_EQ(item.text, text);
    EXPECT_EQ(item.title(), QStringLiteral("héllo from xclip ✓"));
}

TEST_F(X11ClipboardTest, aCopiedPictureIsStoredAsPngUnderItsHashWhateverFormatItCameIn)
{
    const QImage picture = gradient(320, 200, QImage::Format_RGB32);
    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("image/png")},
        encoded(picture.convertToFormat(QImage::Format_ARGB32), "PNG"));
    ASSERT_TRUE(waitForItems(1));
    const ClipItem item = m_store.items().first();
    EXPECT_EQ(item.kind, ClipItem::Kind::image);
    EXPECT_EQ(item.pixelWidth, 320);
    EXPECT_EQ(item.pixelHeight, 200);
    ASSERT_TRUE(item.imageFile.has_value());
    EXPECT_EQ(*item.imageFile, item.hash.left(24) + QStringLiteral(".png"));
    m_store.waitForSaved();
    QFile file(m_dir.path() + QStringLiteral("/images/") + *item.imageFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray png = file.readAll();
    EXPECT_EQ(ClipboardStore::hash(QStringLiteral("image"), png), item.hash);
    const QImage stored = QImage::fromData(png, "PNG");
    EXPECT_EQ(stored.convertToFormat(QImage::Format_RGB32), picture);
    EXPECT_TRUE(stored.text().isEmpty()) << "metadata of the copying application is not kept";

    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("image/bmp")}, encoded(picture, "BMP"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_store.items().first().date > item.date; }, waitMs));
    EXPECT_EQ(m_store.items().size(), 1) << "the same picture as BMP folds into the PNG entry";
    EXPECT_EQ(m_store.items().first().id, item.id);
}

TEST_F(X11ClipboardTest, aPictureTooLargeForOneRequestArrivesInPieces)
{
    // Noise does not compress: several megabytes of PNG, which xclip sends incrementally.
    QImage noise(1200, 1000, QImage::Format_RGB32);
    auto *random = QRandomGenerator::global();
    for (int y = 0; y < noise.height(); ++y)
        random->fillRange(reinterpret_cast<quint32 *>(noise.scanLine(y)), noise.width());
    const QByteArray png = encoded(noise, "PNG");
    ASSERT_GT(png.size(), 3'000'000);
    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("image/png")}, png);
    ASSERT_TRUE(waitForItems(1));
    const ClipItem &picture = m_store.items().first();
    EXPECT_EQ(picture.kind, ClipItem::Kind::image);
    EXPECT_EQ(picture.pixelWidth, 1200);
    m_store.waitForSaved();
    EXPECT_EQ(QImage(m_dir.path() + QStringLiteral("/images/") + *picture.imageFile), noise);
}

TEST_F(X11ClipboardTest, aCopiedUriListIsRecordedAsItsLocalFiles)
{
    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("text/uri-list")},
        "file:///tmp/a%20b.txt\r\nhttps://example.org/page\r\nfile:///etc/hosts\r\n");
    ASSERT_TRUE(waitForItems(1));
    const ClipItem &item = m_store.items().first();
    EXPECT_EQ(item.kind, ClipItem::Kind::files);
    EXPECT_EQ(item.files, (QStringList{QStringLiteral("/tmp/a b.txt"), QStringLiteral("/etc/hosts")}));
    EXPECT_EQ(item.title(), QStringLiteral("a b.txt, hosts"));
}

TEST_F(X11ClipboardTest, aCopyHintedAsAPasswordIsNeverRecorded)
{
    const auto own = [](const QStringList &targets) {
        auto owner = std::make_unique<QProcess>();
        owner->start(QStringLiteral(TESSARY_CLIPBOARD_OWNER), targets);
        const bool owning = owner->waitForStarted()
            && QTest::qWaitFor([&] { return owner->canReadLine() || owner->state() == QProcess::NotRunning; }, waitMs)
            && owner->readLine() == "owning\n";
        EXPECT_TRUE(owning) << owner->readAllStandardError().constData();
        return owner;
    };
    const qint64 before = m_pasteboard.changeCount();
    auto secret = own({QStringLiteral("text/plain"), QStringLiteral("hunter2"),
        QStringLiteral("x-kde-passwordManagerHint"), QStringLiteral("secret")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_store.lastChange() > before; }, waitMs));
    settle();
    EXPECT_TRUE(m_store.items().isEmpty());

    auto plain = own({QStringLiteral("text/plain"), QStringLiteral("not a secret")});
    ASSERT_TRUE(waitForItems(1)) << "the same owner without the hint is recorded";
    EXPECT_EQ(m_store.items().first().text, QStringLiteral("not a secret"));
    for (auto *owner : {secret.get(), plain.get()}) {
        owner->kill();
        owner->waitForFinished();
    }
}

TEST_F(X11ClipboardTest, copyingAnEntryBackServesItWithoutRecordingItAgain)
{
    const QImage picture = gradient(64, 48, QImage::Format_RGB32);
    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("image/png")}, encoded(picture, "PNG"));
    ASSERT_TRUE(waitForItems(1));
    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("text/uri-list")}, "file:///etc/hosts\n");
    ASSERT_TRUE(waitForItems(2));
    xclip({QStringLiteral("-i")}, "copied text");
    ASSERT_TRUE(waitForItems(3));
    const QList<ClipItem> before = m_store.items();

    m_store.copy(before.at(2), false);
    const QImage served
        = QImage::fromData(xclip({QStringLiteral("-o"), QStringLiteral("-t"), QStringLiteral("image/png")}), "PNG");
    EXPECT_EQ(served.convertToFormat(QImage::Format_RGB32), picture);

    m_store.copy(before.at(1), false);
    EXPECT_EQ(xclip({QStringLiteral("-o"), QStringLiteral("-t"), QStringLiteral("text/uri-list")}).trimmed(),
        QByteArray("file:///etc/hosts"));

    m_store.copy(before.at(0), false);
    EXPECT_EQ(xclip({QStringLiteral("-o")}), QByteArray("copied text"));

    settle();
    EXPECT_EQ(m_store.items(), before);
}

// A snippet's {clipboard}: another application's text arrives later, through
// the reader; this process's own copy at once; a picture reads as no text.
TEST_F(X11ClipboardTest, theTextIsReadForAUserActionWithoutWaitingForTheOwner)
{
    const auto readText = [this] {
        std::optional<std::optional<QString>> answer;
        m_pasteboard.readString([&answer](const std::optional<QString> &text) { answer = text; });
        const bool answeredAtOnce = answer.has_value();
        (void)QTest::qWaitFor([&] { return answer.has_value(); }, waitMs);
        return std::pair{answeredAtOnce, answer.value_or(QStringLiteral("(no answer)"))};
    };

    xclip({QStringLiteral("-i")}, "from another application");
    ASSERT_TRUE(waitForItems(1));
    EXPECT_EQ(readText(), std::pair(false, std::optional(QStringLiteral("from another application"))));

    m_pasteboard.writeString(QStringLiteral("our own"));
    EXPECT_EQ(readText(), std::pair(true, std::optional(QStringLiteral("our own"))));

    xclip({QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("image/png")},
        encoded(gradient(8, 8, QImage::Format_RGB32), "PNG"));
    ASSERT_TRUE(waitForItems(2));
    EXPECT_EQ(readText(), std::pair(false, std::optional<QString>()));
}

TEST_F(X11ClipboardTest, copiesAreAttributedToTheActiveApplicationAndExcludedAppsAreSkipped)
{
    X11Connection *x11 = X11Connection::instance();
    ASSERT_NE(x11, nullptr);
    const X11Workspace workspace(*x11);
    m_store.frontAppProvider = ClipboardStore::frontAppProviderFor(workspace);
    QProcess xterm;
    xterm.start(QStringLiteral("xterm"), {QStringLiteral("-display"), qEnvironmentVariable("DISPLAY")});
    const QString xtermId = QStringLiteral("debian-xterm");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const auto front = workspace.frontmostApplication();
            return front && front->pid == xterm.processId();
        },
        waitMs));
    ASSERT_EQ(workspace.frontmostApplication()->id, xtermId);

    xclip({QStringLiteral("-i")}, "typed in the terminal");
    ASSERT_TRUE(waitForItems(1));
    EXPECT_EQ(m_store.items().first().sourceApp, xtermId);

    m_store.excludedApps = {xtermId};
    const qint64 before = m_pasteboard.changeCount();
    xclip({QStringLiteral("-i")}, "a password from the terminal");
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_store.lastChange() > before; }, waitMs));
    settle();
    EXPECT_EQ(m_store.items().size(), 1);
    xterm.kill();
    xterm.waitForFinished();
}

} // namespace
} // namespace tessary
