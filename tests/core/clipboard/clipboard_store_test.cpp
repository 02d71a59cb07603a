#include "core/clipboard/clipboard_store.h"

#include "core/json/strict_json.h"
#include "core/platform/workspace.h"
#include "platform/fake/clipboard/fake_pasteboard.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <memory>

namespace tessary {
namespace {

constexpr QFileDevice::Permissions ownerReadWrite = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

PasteboardImage picture(const QByteArray &png, qint64 width = 4, qint64 height = 3)
{
    return {.png = png, .pixelWidth = width, .pixelHeight = height};
}

QStringList texts(const QList<ClipItem> &items)
{
    QStringList result;
    for (const ClipItem &item : items)
        result.append(item.text.value_or(QStringLiteral("<%1>").arg(rawValue(item.kind))));
    return result;
}

// A history entry as if recorded `daysAgo` days ago, for seeding the history file.
ClipItem storedText(const QString &text, double daysAgo, bool pinned = false)
{
    ClipItem item;
    item.id = QUuid::createUuid();
    item.text = text;
    item.date = QDateTime::currentDateTimeUtc().addSecs(qint64(-daysAgo * 86'400));
    item.pinned = pinned;
    item.hash = ClipboardStore::hash(QStringLiteral("text"), text);
    return item;
}

// A valid stored image name made of one repeated hexadecimal digit.
QString pngName(char digit) { return QString(24, QLatin1Char(digit)) + QStringLiteral(".png"); }

ClipItem storedImage(const QString &file)
{
    ClipItem item = storedText(QString(), 0);
    item.kind = ClipItem::Kind::image;
    item.text.reset();
    item.imageFile = file;
    item.hash = ClipboardStore::hash(QStringLiteral("image"), file.toUtf8());
    item.pixelWidth = 1;
    item.pixelHeight = 1;
    return item;
}

class ClipboardStoreTest : public ::testing::Test {
protected:
    QString dir() const { return m_temp.path() + QStringLiteral("/Tessary"); }
    QString imagePath(const QString &name) const { return dir() + QStringLiteral("/images/") + name; }
    QString historyPath() const { return dir() + QStringLiteral("/clipboard.json"); }

    ClipboardStore &open()
    {
        m_store.reset();
        m_store = std::make_unique<ClipboardStore>(dir(), m_pasteboard);
        m_store->retentionDays = 0;
        m_store->frontAppProvider = [this] { return m_frontApp; };
        return *m_store;
    }
    ClipboardStore &store() { return *m_store; }

    void copyText(const QString &text, const QStringList &extraTypes = {})
    {
        m_pasteboard.copyText(text, extraTypes);
        m_store->poll();
    }
    // Large pictures are hashed on the thread pool and recorded back on this thread.
    void copy(FakePasteboard::Content content)
    {
        m_pasteboard.setContent(std::move(content));
        m_store->poll();
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
    // Seeding files closes the store first, so that none of its writes land afterwards.
    void writeHistory(const QList<ClipItem> &items)
    {
        m_store.reset();
        QDir().mkpath(dir() + QStringLiteral("/images"));
        QFile file(historyPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(ClipItem::listToJson(items));
    }
    void writeImageFile(const QString &name)
    {
        m_store.reset();
        QDir().mkpath(dir() + QStringLiteral("/images"));
        QFile file(imagePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("png");
    }
    void flush()
    {
        if (m_store)
            m_store->waitForSaved();
    }
    bool imageExists(const QString &name)
    {
        flush();
        return QFile::exists(imagePath(name));
    }
    // The contents of the unreadable histories kept beside the history file.
    QList<QByteArray> keptCopies() const
    {
        QList<QByteArray> copies;
        const QDir folder(dir());
        for (const QString &name : folder.entryList({QStringLiteral("clipboard.json.unreadable-*")}, QDir::Files)) {
            QFile file(folder.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            EXPECT_EQ(file.permissions() & QFileDevice::Permissions(0x7077), ownerReadWrite);
            copies.append(file.readAll());
        }
        return copies;
    }
    QByteArray historyFile()
    {
        flush();
        QFile file(historyPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_temp;
    FakePasteboard m_pasteboard;
    std::optional<QString> m_frontApp;
    std::unique_ptr<ClipboardStore> m_store;
};

TEST_F(ClipboardStoreTest, recordsACopiedTextOnceAndNotWhatWasThereAtStart)
{
    m_pasteboard.copyText(QStringLiteral("there before"));
    open();
    store().poll();
    EXPECT_TRUE(store().items().isEmpty());

    m_frontApp = QStringLiteral("org.kde.kate");
    copyText(QStringLiteral("hello from the clipboard"));
    store().poll();
    ASSERT_EQ(store().items().size(), 1);
    const ClipItem &item = store().items().first();
    EXPECT_EQ(item.kind, ClipItem::Kind::text);
    EXPECT_EQ(item.text, QStringLiteral("hello from the clipboard"));
    EXPECT_EQ(item.sourceApp, QStringLiteral("org.kde.kate"));
    EXPECT_EQ(item.hash, ClipboardStore::hash(QStringLiteral("text"), QStringLiteral("hello from the clipboard")));
    EXPECT_EQ(m_pasteboard.typeReads(), 1);
    EXPECT_EQ(m_pasteboard.contentReads(), 1) << "one read of the owner's content per change";
}

TEST_F(ClipboardStoreTest, aRepeatedCopyMovesTheEntryToTheTopKeepingIdAndPin)
{
    open();
    m_frontApp = QStringLiteral("first.app");
    copyText(QStringLiteral("one"));
    copyText(QStringLiteral("two"));
    store().togglePin(store().items().at(1));
    const ClipItem before = store().items().at(1);

    m_frontApp.reset();
    copyText(QStringLiteral("one"));
    ASSERT_EQ(texts(store().items()), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    const ClipItem &after = store().items().first();
    EXPECT_EQ(after.id, before.id);
    EXPECT_TRUE(after.pinned);
    EXPECT_GE(after.date, before.date);
    EXPECT_EQ(after.sourceApp, QStringLiteral("first.app")) << "an unknown source keeps the old one";

    m_frontApp = QStringLiteral("second.app");
    copyText(QStringLiteral("two"));
    EXPECT_EQ(store().items().first().sourceApp, QStringLiteral("second.app"));
}

TEST_F(ClipboardStoreTest, copiesMarkedByPasswordManagersOrTransientAreNeverRecordedNorRead)
{
    open();
    QStringList skipped = {
        QStringLiteral("org.nspasteboard.ConcealedType"),
        QStringLiteral("org.nspasteboard.TransientType"),
        QStringLiteral("org.nspasteboard.AutoGeneratedType"),
        QStringLiteral("com.agilebits.onepassword"),
        QStringLiteral("de.petermaurer.TransientPasteboardType"),
        QStringLiteral("com.typeit4me.clipping"),
    };
#ifndef Q_OS_MACOS
    skipped.append(QStringLiteral("x-kde-passwordManagerHint"));
#endif
    for (const QString &type : std::as_const(skipped))
        copyText(QStringLiteral("secret ") + type, {type});
    EXPECT_TRUE(store().items().isEmpty());
    EXPECT_EQ(m_pasteboard.contentReads(), 0);
    flush();
    EXPECT_FALSE(QFile::exists(historyPath()));
}

TEST_F(ClipboardStoreTest, copiesFromExcludedApplicationsAreNeverRecordedNorRead)
{
    open();
    store().excludedApps = {QStringLiteral("com.1password.1password"), QStringLiteral("keepassxc")};
    for (const char *app : {"com.1password.1password", "keepassxc"}) {
        m_frontApp = QString::fromLatin1(app);
        copyText(QStringLiteral("password"));
    }
    EXPECT_TRUE(store().items().isEmpty());
    EXPECT_EQ(m_pasteboard.contentReads(), 0);

    m_frontApp = QStringLiteral("org.kde.kate");
    copyText(QStringLiteral("public"));
    EXPECT_EQ(texts(store().items()), QStringList{QStringLiteral("public")});
}

TEST_F(ClipboardStoreTest, blockedCopiesAreConsumedAndNeverRecordedLater)
{
    const struct {
        const char *name;
        std::function<void(ClipboardStore &, bool block)> set;
    } switches[] = {
        {"paused", [](ClipboardStore &s, bool block) { s.setPaused(block); }},
        {"disabled", [](ClipboardStore &s, bool block) { s.enabled = !block; }},
    };
    for (const auto &gate : switches) {
        open();
        store().clear(false);
        gate.set(store(), true);
        copyText(QStringLiteral("while blocked"));
        gate.set(store(), false);
        store().poll();
        EXPECT_TRUE(store().items().isEmpty()) << gate.name;
        copyText(QStringLiteral("after"));
        EXPECT_EQ(texts(store().items()), QStringList{QStringLiteral("after")}) << gate.name;
    }
    EXPECT_EQ(m_pasteboard.contentReads(), 2) << "blocked copies are never read";
}

TEST_F(ClipboardStoreTest, filesComeBeforeTextAndTextBeforeImage)
{
    open();
    const QList<QUrl> urls{
        QUrl::fromLocalFile(QStringLiteral("/tmp/a.txt")), QUrl::fromLocalFile(QStringLiteral("/tmp/b c.txt"))};
    copy({.types = {}, .fileUrls = urls, .string = QStringLiteral("text"), .image = picture("png-a")});
    copy({.types = {}, .fileUrls = {}, .string = QStringLiteral("text"), .image = picture("png-b")});
    copy({.types = {}, .fileUrls = {}, .string = QStringLiteral(" \n\t "), .image = picture("png-c", 800, 600)});
    copy({.types = {}, .fileUrls = {}, .string = QStringLiteral("  \n"), .image = std::nullopt});
    copy({});

    ASSERT_EQ(store().items().size(), 3);
    const ClipItem &image = store().items().at(0);
    EXPECT_EQ(image.kind, ClipItem::Kind::image);
    EXPECT_EQ(image.title(), QStringLiteral("Image 800×600"));
    EXPECT_EQ(store().items().at(1).text, QStringLiteral("text"));
    const ClipItem &files = store().items().at(2);
    EXPECT_EQ(files.kind, ClipItem::Kind::files);
    EXPECT_EQ(files.files, (QStringList{QStringLiteral("/tmp/a.txt"), QStringLiteral("/tmp/b c.txt")}));
    EXPECT_EQ(files.hash, ClipboardStore::hash(QStringLiteral("files"), QStringLiteral("/tmp/a.txt\n/tmp/b c.txt")));
    EXPECT_EQ(files.text, std::nullopt);
}

TEST_F(ClipboardStoreTest, oversizedCopiesAreSkippedWithoutFallingBack)
{
    open();
    const struct {
        const char *name;
        FakePasteboard::Content content;
        bool recorded;
    } cases[] = {
        {"text of 1,000,000 bytes", {.string = QString(1'000'000, u'a')}, true},
        {"text of 1,000,001 bytes, image beside", {.string = QString(1'000'001, u'b'), .image = picture("png")}, false},
        {"multi-byte text over the limit", {.string = QString(500'001, u'é')}, false},
        {"PNG of 25,000,000 bytes", {.image = picture(QByteArray(25'000'000, 'c'))}, true},
        {"PNG of 25,000,001 bytes", {.image = picture(QByteArray(25'000'001, 'd'))}, false},
    };
    for (const auto &c : cases) {
        const qsizetype before = store().items().size();
        copy(c.content);
        EXPECT_EQ(store().items().size(), before + (c.recorded ? 1 : 0)) << c.name;
    }
    flush();
    EXPECT_EQ(QDir(dir() + QStringLiteral("/images")).entryList(QDir::Files).size(), 1);
}

TEST_F(ClipboardStoreTest, copiesLandInCopyOrderWhateverOrderTheirReadsFinishIn)
{
    open();
    m_pasteboard.holdPictureReads = true;
    copy({.types = {FakePasteboard::imageType}, .image = picture("older picture")});
    copyText(QStringLiteral("copied while the picture was decoded"));
    copy({.types = {FakePasteboard::imageType}, .image = picture(QByteArray(2'000'000, 'n'))});
    EXPECT_TRUE(store().items().isEmpty()) << "nothing lands above a copy still being read";
    m_pasteboard.answerHeldReads();
    copy({});
    EXPECT_EQ(texts(store().items()),
        (QStringList{QStringLiteral("<image>"), QStringLiteral("copied while the picture was decoded"),
            QStringLiteral("<image>")}));
    EXPECT_EQ(store().items().last().hash, ClipboardStore::hash(QStringLiteral("image"), QByteArray("older picture")));

    copy({.types = {FakePasteboard::imageType}, .image = picture("copied before the clear")});
    store().clear(false);
    m_pasteboard.answerHeldReads();
    EXPECT_TRUE(store().items().isEmpty());
}

TEST_F(ClipboardStoreTest, anImageIsStoredPrivatelyUnderItsHashAndSurvivesARestart)
{
    open();
    m_frontApp = QStringLiteral("org.gimp.GIMP");
    copy({.types = {FakePasteboard::imageType}, .image = picture("picture bytes", 640, 480)});
    copy({.types = {FakePasteboard::imageType}, .image = picture("picture bytes", 640, 480)});
    ASSERT_EQ(store().items().size(), 1);
    const ClipItem item = store().items().first();
    const QString digest = ClipboardStore::hash(QStringLiteral("image"), QByteArray("picture bytes"));
    EXPECT_EQ(item.hash, digest);
    EXPECT_EQ(item.imageFile, digest.left(24) + QStringLiteral(".png"));
    EXPECT_EQ(item.pixelWidth, 640);
    EXPECT_EQ(item.pixelHeight, 480);
    flush();
    QFile png(imagePath(*item.imageFile));
    ASSERT_TRUE(png.open(QIODevice::ReadOnly));
    EXPECT_EQ(png.readAll(), QByteArray("picture bytes"));

    open();
    EXPECT_EQ(store().items(), QList<ClipItem>{item});
}

TEST_F(ClipboardStoreTest, theHistorySurvivesARestartUnchanged)
{
    open();
    copyText(QStringLiteral("a"));
    copy({.fileUrls = {QUrl::fromLocalFile(QStringLiteral("/etc/hosts"))}});
    copyText(QStringLiteral("b"));
    store().togglePin(store().items().at(1));
    const QList<ClipItem> before = store().items();

    open();
    EXPECT_EQ(store().items(), before);
    store().poll();
    EXPECT_EQ(store().items(), before);
}

TEST_F(ClipboardStoreTest, theCapKeepsPinnedEntriesAndTheNewestUnpinned)
{
    open();
    store().maxItems = 3;
    copyText(QStringLiteral("pinned"));
    store().togglePin(store().items().first());
    for (const char *text : {"1", "2", "3", "4", "5", "6"})
        copyText(QString::fromLatin1(text));
    EXPECT_EQ(texts(store().items()),
        (QStringList{QStringLiteral("6"), QStringLiteral("5"), QStringLiteral("4"), QStringLiteral("pinned")}));

    store().maxItems = 0;
    copyText(QStringLiteral("7"));
    EXPECT_EQ(texts(store().items()), QStringList{QStringLiteral("pinned")});
}

TEST_F(ClipboardStoreTest, aLowerCapWaitsForTheNextRecordedCopy)
{
    open();
    for (const char *text : {"1", "2", "3"})
        copyText(QString::fromLatin1(text));
    store().maxItems = 1;
    store().poll();
    store().togglePin(store().items().last());
    store().togglePin(store().items().last());
    EXPECT_EQ(store().items().size(), 3);
    copyText(QStringLiteral("4"));
    EXPECT_EQ(texts(store().items()), QStringList{QStringLiteral("4")});
}

TEST_F(ClipboardStoreTest, retentionForgetsOldUnpinnedEntriesAtTheNextCopy)
{
    writeHistory({storedText(QStringLiteral("recent"), 29.9), storedText(QStringLiteral("old"), 40),
        storedText(QStringLiteral("old pinned"), 40, true)});
    open();
    store().retentionDays = 30;
    EXPECT_EQ(store().items().size(), 3) << "loading does not prune";
    copyText(QStringLiteral("new"));
    EXPECT_EQ(texts(store().items()),
        (QStringList{QStringLiteral("new"), QStringLiteral("recent"), QStringLiteral("old pinned")}));

    store().retentionDays = 0;
    writeHistory({storedText(QStringLiteral("ancient"), 5000)});
    open();
    copyText(QStringLiteral("newer"));
    EXPECT_EQ(store().items().size(), 2) << "0 keeps entries forever";
}

TEST_F(ClipboardStoreTest, imageFilesAreDeletedOnlyWhenNoEntryUsesThemAnyMore)
{
    open();
    store().maxItems = 1;
    copy({.image = picture("first")});
    const QString first = *store().items().first().imageFile;
    ASSERT_TRUE(imageExists(first));
    copyText(QStringLiteral("pushes the image out"));
    EXPECT_FALSE(imageExists(first)) << "dropped by the cap";
    copy({.image = picture("first")});
    copyText(QStringLiteral("pushes it out again"));
    copy({.image = picture("first")});
    EXPECT_TRUE(imageExists(first)) << "copied again right after its removal";

    const ClipItem a = storedImage(pngName('d'));
    const ClipItem b = storedImage(pngName('d'));
    ClipItem pinned = storedImage(pngName('e'));
    pinned.pinned = true;
    writeImageFile(pngName('d'));
    writeImageFile(pngName('e'));
    writeImageFile(pngName('f'));
    writeHistory({a, b, pinned});
    open();
    store().remove(a);
    EXPECT_TRUE(imageExists(pngName('d')));
    store().remove(b);
    EXPECT_FALSE(imageExists(pngName('d')));
    store().clear(true);
    EXPECT_TRUE(imageExists(pngName('e')));
    store().clear(false);
    EXPECT_FALSE(imageExists(pngName('e')));
    EXPECT_TRUE(imageExists(pngName('f')));
}

TEST_F(ClipboardStoreTest, loadingDropsImageEntriesWhoseFileIsGone)
{
    ClipItem withoutFileName = storedImage(pngName('c'));
    withoutFileName.imageFile.reset();
    writeImageFile(pngName('a'));
    writeHistory(
        {storedImage(pngName('a')), storedImage(pngName('b')), withoutFileName, storedText(QStringLiteral("text"), 1)});
    const QByteArray file = historyFile();
    open();
    EXPECT_EQ(texts(store().items()),
        (QStringList{QStringLiteral("<image>"), QStringLiteral("<image>"), QStringLiteral("text")}));
    EXPECT_EQ(store().items().first().imageFile, pngName('a'));
    EXPECT_EQ(historyFile(), file) << "loading does not save";
}

TEST_F(ClipboardStoreTest, anUnreadableHistoryStartsEmptyAndIsOverwrittenByTheNextChange)
{
    const QByteArray good = ClipItem::listToJson({storedText(QStringLiteral("kept"), 1)});
    QByteArray missingPinned = good;
    missingPinned.replace("\"pinned\":false,", "");
    missingPinned.replace(",\"pinned\":false", "");
    const QByteArray corrupt[] = {"", "not json", "{\"id\":1}", good.left(good.size() - 3), missingPinned};
    for (const QByteArray &bytes : corrupt) {
        m_store.reset();
        QDir(dir()).removeRecursively();
        QDir().mkpath(dir());
        QFile file(historyPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        open();
        EXPECT_TRUE(store().items().isEmpty()) << bytes.constData();
        EXPECT_EQ(historyFile(), bytes) << "left alone until the next change";
        EXPECT_EQ(keptCopies(), QList<QByteArray>{bytes}) << "kept before the next change replaces it";
        copyText(QStringLiteral("fresh ") + QString::fromLatin1(bytes));
        EXPECT_EQ(texts(*ClipItem::listFromJson(historyFile())), texts(store().items()));
        EXPECT_EQ(store().items().size(), 1);
    }
}

TEST_F(ClipboardStoreTest, anImageNameLeadingOutOfTheImagesFolderMakesTheHistoryUnreadable)
{
    const QString victim = m_temp.path() + QStringLiteral("/victim.txt");
    const QString hostile[] = {QStringLiteral("../../victim.txt"), victim, QStringLiteral("/etc/passwd"),
        QStringLiteral("a/b.png"), QStringLiteral("../") + pngName('a'), pngName('A'), QString()};
    for (const QString &name : hostile) {
        m_store.reset();
        QDir(dir()).removeRecursively();
        QFile(victim).open(QIODevice::WriteOnly);
        writeImageFile(pngName('a'));
        ClipItem entry = storedImage(pngName('a'));
        entry.imageFile = name;
        writeHistory({entry, storedImage(pngName('a')), storedText(QStringLiteral("pinned"), 1, true)});
        const QByteArray bytes = historyFile();
        open();
        store().maxItems = 0;
        copyText(QStringLiteral("prunes everything unpinned"));
        store().clear(false);
        EXPECT_EQ(keptCopies(), QList<QByteArray>{bytes}) << qPrintable(name);
        EXPECT_TRUE(QFile::exists(victim)) << qPrintable(name);
        EXPECT_TRUE(imageExists(pngName('a'))) << "unknown to the empty history: " << qPrintable(name);
    }
}

TEST_F(ClipboardStoreTest, togglePinNeedsAnEntryEqualInEveryField)
{
    open();
    m_frontApp = QStringLiteral("first.app");
    copyText(QStringLiteral("a"));
    const ClipItem stale = store().items().first();
    copyText(QStringLiteral("b"));
    m_frontApp = QStringLiteral("second.app");
    copyText(QStringLiteral("a"));
    const QByteArray saved = historyFile();
    QSignalSpy changed(&store(), &ClipboardStore::itemsChanged);

    store().togglePin(stale);
    EXPECT_FALSE(store().items().first().pinned) << "copied again since, from another application";
    EXPECT_EQ(historyFile(), saved);
    EXPECT_EQ(changed.size(), 0);

    store().togglePin(store().items().first());
    EXPECT_TRUE(store().items().first().pinned);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_TRUE(ClipItem::listFromJson(historyFile())->first().pinned);
}

TEST_F(ClipboardStoreTest, removeMatchesByIdAndClearCanKeepPinnedEntries)
{
    open();
    for (const char *text : {"a", "b", "c"})
        copyText(QString::fromLatin1(text));
    ClipItem changedCopy = store().items().at(1);
    changedCopy.pinned = true;
    store().remove(changedCopy);
    EXPECT_EQ(texts(store().items()), (QStringList{QStringLiteral("c"), QStringLiteral("a")}));

    store().togglePin(store().items().last());
    store().clear(true);
    EXPECT_EQ(texts(store().items()), QStringList{QStringLiteral("a")});
    store().clear(false);
    EXPECT_TRUE(store().items().isEmpty());
    EXPECT_EQ(ClipItem::listFromJson(historyFile()), QList<ClipItem>());
}

TEST_F(ClipboardStoreTest, searchMatchesEveryWordCaseInsensitivelyPinnedFirst)
{
    open();
    m_frontApp = QStringLiteral("org.kde.spectacle");
    copy({.image = picture("shot")});
    m_frontApp.reset();
    copy({.fileUrls = {QUrl::fromLocalFile(QStringLiteral("/home/u/Report.pdf")),
              QUrl::fromLocalFile(QStringLiteral("/home/u/notes.txt"))}});
    copyText(QStringLiteral("Quick Brown fox"));
    copyText(QStringLiteral("brown bear"));
    copyText(QStringLiteral("the fox, quick"));
    store().togglePin(store().items().at(2));

    const struct {
        const char *query;
        QStringList found;
    } cases[] = {
        {"BROWN", {QStringLiteral("Quick Brown fox"), QStringLiteral("brown bear")}},
        {"fox quick", {QStringLiteral("Quick Brown fox"), QStringLiteral("the fox, quick")}},
        {"  fox   brown ", {QStringLiteral("Quick Brown fox")}},
        {"fox bear", {}},
        {"screenshot spectacle", {QStringLiteral("<image>")}},
        {"pdf u/notes", {QStringLiteral("<files>")}},
        {"",
            {QStringLiteral("Quick Brown fox"), QStringLiteral("the fox, quick"), QStringLiteral("brown bear"),
                QStringLiteral("<files>"), QStringLiteral("<image>")}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(texts(store().search(QString::fromUtf8(c.query))), c.found) << c.query;
}

TEST_F(ClipboardStoreTest, copyPutsTheEntryBackWithoutRecordingOrReorderingIt)
{
    open();
    copy({.fileUrls = {QUrl::fromLocalFile(QStringLiteral("/a")), QUrl::fromLocalFile(QStringLiteral("/b"))}});
    copy({.image = picture("image bytes")});
    copyText(QStringLiteral("newest"));
    copyText(QStringLiteral("text"));
    const QList<ClipItem> before = store().items();
    QSignalSpy changed(&store(), &ClipboardStore::itemsChanged);

    store().copy(before.at(1), false);
    EXPECT_EQ(m_pasteboard.content().string, QStringLiteral("newest"));
    EXPECT_EQ(m_pasteboard.content().types, QStringList{FakePasteboard::textType}) << "plain text only";
    store().poll();

    store().copy(before.at(2), false);
    EXPECT_EQ(m_pasteboard.content().image->png, QByteArray("image bytes"));
    store().poll();

    store().copy(before.at(3), false);
    EXPECT_EQ(m_pasteboard.content().fileUrls,
        (QList<QUrl>{QUrl::fromLocalFile(QStringLiteral("/a")), QUrl::fromLocalFile(QStringLiteral("/b"))}));
    store().copy(before.at(3), true);
    EXPECT_EQ(m_pasteboard.content().string, QStringLiteral("/a\n/b"));
    store().poll();

    EXPECT_EQ(store().items(), before);
    EXPECT_EQ(changed.size(), 0);
}

TEST_F(ClipboardStoreTest, copyOfAnImageWhoseFileIsGoneLeavesThePasteboardEmpty)
{
    open();
    copy({.image = picture("vanishing")});
    copyText(QStringLiteral("on the pasteboard"));
    flush();
    QFile::remove(imagePath(*store().items().at(1).imageFile));
    store().copy(store().items().at(1), false);
    EXPECT_EQ(m_pasteboard.content().string, std::nullopt);
    EXPECT_EQ(m_pasteboard.content().image.has_value(), false);
    store().poll();
    EXPECT_EQ(store().items().size(), 2);
}

TEST_F(ClipboardStoreTest, aReportedChangeIsPolledAtOnceButNotOurOwnWrite)
{
    open();
    store().startMonitoring();
    m_pasteboard.copyText(QStringLiteral("reported"));
    EXPECT_TRUE(store().items().isEmpty()) << "polled from the event loop, not inside the report";
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(store().items()), QStringList{QStringLiteral("reported")});

    copyText(QStringLiteral("other"));
    store().copy(store().items().at(1), false);
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(store().items()), (QStringList{QStringLiteral("other"), QStringLiteral("reported")}));

    m_pasteboard.writeString(QStringLiteral("written by the launcher"));
    store().ignoreCurrentChange();
    QCoreApplication::processEvents();
    EXPECT_EQ(store().items().size(), 2);

    m_store.reset();
    m_pasteboard.copyText(QStringLiteral("after the store is gone"));
    QCoreApplication::processEvents();
}

TEST_F(ClipboardStoreTest, everyFileAndFolderIsPrivateWhateverTheUmask)
{
    const mode_t old = ::umask(0);
    QDir().mkpath(dir());
    QFile::setPermissions(dir(), QFileDevice::Permissions(0x7777));
    open();
    copyText(QStringLiteral("secret"));
    copy({.image = picture("private picture")});
    flush();
    ::umask(old);

    constexpr auto ownerAll = ownerReadWrite | QFileDevice::ExeOwner;
    const auto permissions = [](const QString &path) {
        return QFileInfo(path).permissions() & ~(QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
    };
    EXPECT_EQ(permissions(dir()), ownerAll);
    EXPECT_EQ(permissions(dir() + QStringLiteral("/images")), ownerAll);
    EXPECT_EQ(permissions(historyPath()), ownerReadWrite);
    EXPECT_EQ(permissions(imagePath(*store().items().first().imageFile)), ownerReadWrite);
}

class FixedWorkspace final : public Workspace {
public:
    std::optional<RunningApp> front;
    qint64 ownPid() const override { return 1; }
    std::optional<RunningApp> frontmostApplication() const override { return front; }
    std::optional<RunningApp> menuBarOwningApplication() const override { return front; }
    QList<RunningApp> runningApplications() const override { return {}; }
};

TEST(ClipboardStoreFrontApp, isTheIdOfTheWorkspacesFrontmostApplication)
{
    FixedWorkspace workspace;
    const auto provider = ClipboardStore::frontAppProviderFor(workspace);
    EXPECT_EQ(provider(), std::nullopt);
    workspace.front = RunningApp{.pid = 7, .id = QString(), .name = QStringLiteral("No id")};
    EXPECT_EQ(provider(), std::nullopt);
    workspace.front = RunningApp{.pid = 7, .id = QStringLiteral("org.keepassxc.KeePassXC"), .name = QString()};
    EXPECT_EQ(provider(), QStringLiteral("org.keepassxc.KeePassXC"));
}

} // namespace
} // namespace tessary
