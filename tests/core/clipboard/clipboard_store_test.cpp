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

using namespace Qt::StringLiterals;

constexpr QFileDevice::Permissions ownerReadWrite = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

PasteboardImage picture(const QByteArray &png, qint64 width = 4, qint64 height = 3)
{
    return {.png = png, .pixelWidth = width, .pixelHeight = height};
}

QStringList texts(const QList<ClipItem> &items)
{
    QStringList result;
    for (const ClipItem &item : items)
        result.append(item.text.value_or(u"<%1>"_s.arg(rawValue(item.kind))));
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
    item.hash = ClipboardStore::hash(u"text"_s, text);
    return item;
}

// A valid stored image name made of one repeated hexadecimal digit.
QString pngName(char digit) { return QString(24, QLatin1Char(digit)) + u".png"_s; }

ClipItem storedImage(const QString &file)
{
    ClipItem item = storedText(QString(), 0);
    item.kind = ClipItem::Kind::image;
    item.text.reset();
    item.imageFile = file;
    item.hash = ClipboardStore::hash(u"image"_s, file.toUtf8());
    item.pixelWidth = 1;
    item.pixelHeight = 1;
    return item;
}

class ClipboardStoreTest : public ::testing::Test {
protected:
    QString dir() const { return m_temp.path() + u"/Tessary"_s; }
    QString imagePath(const QString &name) const { return dir() + u"/images/"_s + name; }
    QString historyPath() const { return dir() + u"/clipboard.json"_s; }

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
    void writeFile(const QString &path, const QByteArray &bytes)
    {
        m_store.reset();
        QDir().mkpath(dir() + u"/images"_s);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    void writeHistory(const QList<ClipItem> &items) { writeFile(historyPath(), ClipItem::listToJson(items)); }
    void writeImageFile(const QString &name) { writeFile(imagePath(name), "png"); }
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
        for (const QString &name : folder.entryList({u"clipboard.json.unreadable-*"_s}, QDir::Files)) {
            QFile file(folder.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
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
    m_pasteboard.copyText(u"there before"_s);
    open();
    store().poll();
    EXPECT_TRUE(store().items().isEmpty());

    m_frontApp = u"org.kde.kate"_s;
    copyText(u"hello from the clipboard"_s);
    store().poll();
    ASSERT_EQ(store().items().size(), 1);
    const ClipItem &item = store().items().first();
    EXPECT_EQ(item.text, u"hello from the clipboard"_s);
    EXPECT_EQ(item.sourceApp, u"org.kde.kate"_s);
    EXPECT_EQ(m_pasteboard.typeReads(), 1);
    EXPECT_EQ(m_pasteboard.contentReads(), 1) << "one read of the owner's content per change";
}

TEST_F(ClipboardStoreTest, aRepeatedCopyMovesTheEntryToTheTopKeepingIdAndPin)
{
    open();
    m_frontApp = u"first.app"_s;
    copyText(u"one"_s);
    copyText(u"two"_s);
    store().togglePin(store().items().at(1));
    const ClipItem before = store().items().at(1);

    m_frontApp.reset();
    copyText(u"one"_s);
    ASSERT_EQ(texts(store().items()), (QStringList{u"one"_s, u"two"_s}));
    const ClipItem &after = store().items().first();
    EXPECT_EQ(after.id, before.id);
    EXPECT_TRUE(after.pinned);
    EXPECT_GE(after.date, before.date);
    EXPECT_EQ(after.sourceApp, u"first.app"_s) << "an unknown source keeps the old one";

    m_frontApp = u"second.app"_s;
    copyText(u"two"_s);
    EXPECT_EQ(store().items().first().sourceApp, u"second.app"_s);
}

TEST_F(ClipboardStoreTest, secretCopiesAndCopiesFromExcludedApplicationsAreNeverRecordedNorRead)
{
    open();
    for (const char *type : {"org.nspasteboard.ConcealedType", "org.nspasteboard.TransientType"})
        copyText(u"secret "_s + QLatin1String(type), {QString::fromLatin1(type)});
    store().excludedApps = {u"keepassxc"_s};
    m_frontApp = u"keepassxc"_s;
    copyText(u"password"_s);
    EXPECT_TRUE(store().items().isEmpty());
    EXPECT_EQ(m_pasteboard.contentReads(), 0);
    flush();
    EXPECT_FALSE(QFile::exists(historyPath()));

    m_frontApp = u"org.kde.kate"_s;
    copyText(u"public"_s);
    EXPECT_EQ(texts(store().items()), QStringList{u"public"_s});
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
        copyText(u"while blocked"_s);
        gate.set(store(), false);
        store().poll();
        EXPECT_TRUE(store().items().isEmpty()) << gate.name;
        copyText(u"after"_s);
        EXPECT_EQ(texts(store().items()), QStringList{u"after"_s}) << gate.name;
    }
    EXPECT_EQ(m_pasteboard.contentReads(), 2) << "blocked copies are never read";
}

TEST_F(ClipboardStoreTest, filesComeBeforeTextAndTextBeforeImage)
{
    open();
    const QList<QUrl> urls{QUrl::fromLocalFile(u"/tmp/a.txt"_s), QUrl::fromLocalFile(u"/tmp/b c.txt"_s)};
    copy({.types = {}, .fileUrls = urls, .string = u"text"_s, .image = picture("png-a")});
    copy({.types = {}, .fileUrls = {}, .string = u"text"_s, .image = picture("png-b")});
    copy({.types = {}, .fileUrls = {}, .string = u" \n\t "_s, .image = picture("png-c", 800, 600)});
    copy({.types = {}, .fileUrls = {}, .string = u"  \n"_s, .image = std::nullopt});
    copy({});

    ASSERT_EQ(store().items().size(), 3);
    const ClipItem &image = store().items().at(0);
    EXPECT_EQ(image.kind, ClipItem::Kind::image);
    EXPECT_EQ(image.title(), u"Image 800×600"_s);
    EXPECT_EQ(store().items().at(1).text, u"text"_s);
    const ClipItem &files = store().items().at(2);
    EXPECT_EQ(files.kind, ClipItem::Kind::files);
    EXPECT_EQ(files.files, (QStringList{u"/tmp/a.txt"_s, u"/tmp/b c.txt"_s}));
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
    EXPECT_EQ(QDir(dir() + u"/images"_s).entryList(QDir::Files).size(), 1);
}

TEST_F(ClipboardStoreTest, copiesLandInCopyOrderWhateverOrderTheirReadsFinishIn)
{
    open();
    m_pasteboard.holdPictureReads = true;
    copy({.types = {FakePasteboard::imageType}, .image = picture("older picture")});
    copyText(u"copied while the picture was decoded"_s);
    copy({.types = {FakePasteboard::imageType}, .image = picture(QByteArray(2'000'000, 'n'))});
    EXPECT_TRUE(store().items().isEmpty()) << "nothing lands above a copy still being read";
    m_pasteboard.answerHeldReads();
    copy({});
    EXPECT_EQ(
        texts(store().items()), (QStringList{u"<image>"_s, u"copied while the picture was decoded"_s, u"<image>"_s}));
    EXPECT_EQ(store().items().last().hash, ClipboardStore::hash(u"image"_s, QByteArray("older picture")));

    copy({.types = {FakePasteboard::imageType}, .image = picture("copied before the clear")});
    store().clear(false);
    m_pasteboard.answerHeldReads();
    EXPECT_TRUE(store().items().isEmpty());
}

TEST_F(ClipboardStoreTest, theHistoryAndItsImagesSurviveARestartUnchanged)
{
    open();
    copyText(u"a"_s);
    copy({.image = picture("picture bytes")});
    copy({.fileUrls = {QUrl::fromLocalFile(u"/etc/hosts"_s)}});
    store().togglePin(store().items().at(1));
    const QList<ClipItem> before = store().items();
    const QString digest = ClipboardStore::hash(u"image"_s, QByteArray("picture bytes"));
    EXPECT_EQ(before.at(1).imageFile, digest.left(24) + u".png"_s);
    flush();
    QFile png(imagePath(digest.left(24) + u".png"_s));
    ASSERT_TRUE(png.open(QIODevice::ReadOnly));
    EXPECT_EQ(png.readAll(), QByteArray("picture bytes"));

    open();
    EXPECT_EQ(store().items(), before);
    store().poll();
    EXPECT_EQ(store().items(), before);
}

TEST_F(ClipboardStoreTest, theCapKeepsPinnedEntriesAndTheNewestUnpinnedFromTheNextCopyOn)
{
    open();
    copyText(u"pinned"_s);
    store().togglePin(store().items().first());
    for (const char *text : {"1", "2", "3", "4", "5"})
        copyText(QString::fromLatin1(text));
    store().maxItems = 3;
    store().poll();
    store().togglePin(store().items().last());
    store().togglePin(store().items().last());
    EXPECT_EQ(store().items().size(), 6) << "a lower cap waits for the next recorded copy";
    copyText(u"6"_s);
    EXPECT_EQ(texts(store().items()), (QStringList{u"6"_s, u"5"_s, u"4"_s, u"pinned"_s}));

    store().maxItems = 0;
    copyText(u"7"_s);
    EXPECT_EQ(texts(store().items()), QStringList{u"pinned"_s});
}

TEST_F(ClipboardStoreTest, retentionForgetsOldUnpinnedEntriesAtTheNextCopy)
{
    writeHistory({storedText(u"recent"_s, 29.9), storedText(u"old"_s, 40), storedText(u"old pinned"_s, 40, true)});
    open();
    store().retentionDays = 30;
    EXPECT_EQ(store().items().size(), 3) << "loading does not prune";
    copyText(u"new"_s);
    EXPECT_EQ(texts(store().items()), (QStringList{u"new"_s, u"recent"_s, u"old pinned"_s}));
}

TEST_F(ClipboardStoreTest, imageFilesAreDeletedOnlyWhenNoEntryUsesThemAnyMore)
{
    open();
    store().maxItems = 1;
    copy({.image = picture("first")});
    const QString first = *store().items().first().imageFile;
    ASSERT_TRUE(imageExists(first));
    copyText(u"pushes the image out"_s);
    EXPECT_FALSE(imageExists(first)) << "dropped by the cap";
    copy({.image = picture("first")});
    copyText(u"pushes it out again"_s);
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
    writeHistory({storedImage(pngName('a')), storedImage(pngName('b')), withoutFileName, storedText(u"text"_s, 1)});
    const QByteArray file = historyFile();
    open();
    EXPECT_EQ(texts(store().items()), (QStringList{u"<image>"_s, u"<image>"_s, u"text"_s}));
    EXPECT_EQ(store().items().first().imageFile, pngName('a'));
    EXPECT_EQ(historyFile(), file) << "loading does not save";
}

TEST_F(ClipboardStoreTest, anUnreadableHistoryStartsEmptyAndIsOverwrittenByTheNextChange)
{
    const QByteArray good = ClipItem::listToJson({storedText(u"kept"_s, 1)});
    QByteArray missingPinned = good;
    missingPinned.replace("\"pinned\":false,", "");
    missingPinned.replace(",\"pinned\":false", "");
    const QByteArray corrupt[] = {"", "not json", "{\"id\":1}", good.left(good.size() - 3), missingPinned};
    for (const QByteArray &bytes : corrupt) {
        m_store.reset();
        QDir(dir()).removeRecursively();
        writeFile(historyPath(), bytes);
        open();
        EXPECT_TRUE(store().items().isEmpty()) << bytes.constData();
        EXPECT_EQ(historyFile(), bytes) << "left alone until the next change";
        EXPECT_EQ(keptCopies(), QList<QByteArray>{bytes}) << "kept before the next change replaces it";
        copyText(u"fresh "_s + QString::fromLatin1(bytes));
        EXPECT_EQ(texts(*ClipItem::listFromJson(historyFile())), texts(store().items()));
        EXPECT_EQ(store().items().size(), 1);
    }
}

// Which names are refused is the decoder's business; this guards what a refused one leads to.
TEST_F(ClipboardStoreTest, anImageNameLeadingOutOfTheImagesFolderMakesTheHistoryUnreadable)
{
    const QString victim = m_temp.path() + u"/victim.txt"_s;
    QFile(victim).open(QIODevice::WriteOnly);
    writeImageFile(pngName('a'));
    ClipItem entry = storedImage(pngName('a'));
    entry.imageFile = u"../../victim.txt"_s;
    writeHistory({entry, storedImage(pngName('a')), storedText(u"pinned"_s, 1, true)});
    const QByteArray bytes = historyFile();
    open();
    store().maxItems = 0;
    copyText(u"prunes everything unpinned"_s);
    store().clear(false);
    EXPECT_EQ(keptCopies(), QList<QByteArray>{bytes});
    EXPECT_TRUE(QFile::exists(victim));
    EXPECT_TRUE(imageExists(pngName('a'))) << "unknown to the empty history";
}

TEST_F(ClipboardStoreTest, togglePinNeedsAnEntryEqualInEveryField)
{
    open();
    m_frontApp = u"first.app"_s;
    copyText(u"a"_s);
    const ClipItem stale = store().items().first();
    copyText(u"b"_s);
    m_frontApp = u"second.app"_s;
    copyText(u"a"_s);
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

TEST_F(ClipboardStoreTest, removeMatchesByIdAndClearingSavesAnEmptyHistory)
{
    open();
    for (const char *text : {"a", "b", "c"})
        copyText(QString::fromLatin1(text));
    ClipItem changedCopy = store().items().at(1);
    changedCopy.pinned = true;
    store().remove(changedCopy);
    EXPECT_EQ(texts(store().items()), (QStringList{u"c"_s, u"a"_s}));
    store().clear(false);
    EXPECT_EQ(ClipItem::listFromJson(historyFile()), QList<ClipItem>());
}

TEST_F(ClipboardStoreTest, searchMatchesEveryWordCaseInsensitivelyPinnedFirst)
{
    open();
    m_frontApp = u"org.kde.spectacle"_s;
    copy({.image = picture("shot")});
    m_frontApp.reset();
    copy({.fileUrls = {QUrl::fromLocalFile(u"/home/u/Report.pdf"_s), QUrl::fromLocalFile(u"/home/u/notes.txt"_s)}});
    copyText(u"Quick Brown fox"_s);
    copyText(u"brown bear"_s);
    copyText(u"the fox, quick"_s);
    store().togglePin(store().items().at(2));

    const struct {
        const char *query;
        QStringList found;
    } cases[] = {
        {"BROWN", {u"Quick Brown fox"_s, u"brown bear"_s}},
        {"fox quick", {u"Quick Brown fox"_s, u"the fox, quick"_s}},
        {"  fox   brown ", {u"Quick Brown fox"_s}},
        {"fox bear", {}},
        {"screenshot spectacle", {u"<image>"_s}},
        {"pdf u/notes", {u"<files>"_s}},
        {"", {u"Quick Brown fox"_s, u"the fox, quick"_s, u"brown bear"_s, u"<files>"_s, u"<image>"_s}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(texts(store().search(QString::fromUtf8(c.query))), c.found) << c.query;
}

TEST_F(ClipboardStoreTest, copyPutsTheEntryBackWithoutRecordingOrReorderingIt)
{
    open();
    copy({.fileUrls = {QUrl::fromLocalFile(u"/a"_s), QUrl::fromLocalFile(u"/b"_s)}});
    copyText(u"newest"_s);
    copyText(u"text"_s);
    const QList<ClipItem> before = store().items();
    QSignalSpy changed(&store(), &ClipboardStore::itemsChanged);

    store().copy(before.at(1), false);
    EXPECT_EQ(m_pasteboard.content().string, u"newest"_s);
    EXPECT_EQ(m_pasteboard.content().types, QStringList{FakePasteboard::textType}) << "plain text only";
    store().poll();

    store().copy(before.at(2), false);
    EXPECT_EQ(
        m_pasteboard.content().fileUrls, (QList<QUrl>{QUrl::fromLocalFile(u"/a"_s), QUrl::fromLocalFile(u"/b"_s)}));
    store().copy(before.at(2), true);
    EXPECT_EQ(m_pasteboard.content().string, u"/a\n/b"_s);
    store().poll();

    EXPECT_EQ(store().items(), before);
    EXPECT_EQ(changed.size(), 0);
}

TEST_F(ClipboardStoreTest, copyOfAnImageWhoseFileIsGoneLeavesThePasteboardEmpty)
{
    open();
    copy({.image = picture("vanishing")});
    copyText(u"on the pasteboard"_s);
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
    m_pasteboard.copyText(u"reported"_s);
    EXPECT_TRUE(store().items().isEmpty()) << "polled from the event loop, not inside the report";
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(store().items()), QStringList{u"reported"_s});

    copyText(u"other"_s);
    store().copy(store().items().at(1), false);
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(store().items()), (QStringList{u"other"_s, u"reported"_s}));

    m_store.reset();
    m_pasteboard.copyText(u"after the store is gone"_s);
    QCoreApplication::processEvents();
}

TEST_F(ClipboardStoreTest, everyFileAndFolderIsPrivateWhateverTheUmask)
{
    const mode_t old = ::umask(0);
    QDir().mkpath(dir());
    QFile::setPermissions(dir(), QFileDevice::Permissions(0x7777));
    open();
    copyText(u"secret"_s);
    copy({.image = picture("private picture")});
    flush();
    ::umask(old);

    constexpr auto ownerAll = ownerReadWrite | QFileDevice::ExeOwner;
    const auto permissions = [](const QString &path) {
        return QFileInfo(path).permissions() & ~(QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
    };
    EXPECT_EQ(permissions(dir()), ownerAll);
    EXPECT_EQ(permissions(dir() + u"/images"_s), ownerAll);
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
    workspace.front = RunningApp{.pid = 7, .id = QString(), .name = u"No id"_s};
    EXPECT_EQ(provider(), std::nullopt);
    workspace.front = RunningApp{.pid = 7, .id = u"org.keepassxc.KeePassXC"_s, .name = QString()};
    EXPECT_EQ(provider(), u"org.keepassxc.KeePassXC"_s);
}

} // namespace
} // namespace tessary
