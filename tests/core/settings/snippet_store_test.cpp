#include "core/settings/snippet_store.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void expectDefaults(const QList<Snippet> &snippets)
{
    ASSERT_EQ(snippets.size(), 2);
    EXPECT_EQ(snippets[0].name, u"Today's date"_s);
    EXPECT_EQ(snippets[0].keyword, u"date"_s);
    EXPECT_EQ(snippets[0].text, u"{date}"_s);
    EXPECT_EQ(snippets[1].name, u"Email sign-off"_s);
    EXPECT_EQ(snippets[1].keyword, u"thanks"_s);
    EXPECT_EQ(snippets[1].text, u"Thanks,\n"_s);
    EXPECT_NE(snippets[0].id, snippets[1].id);
}

TEST(SnippetStore, anEmptyDirectoryGivesTheDefaultsAndWritesNothing)
{
    QTemporaryDir root;
    const QString directory = root.filePath(u"nested/Tessary"_s);
    SnippetStore store(directory);
    expectDefaults(store.snippets());
    EXPECT_TRUE(QDir(directory).exists()) << "the directory is created";
    EXPECT_EQ(store.url(), QDir(directory).filePath(u"snippets.json"_s));
    EXPECT_FALSE(QFile::exists(store.url()));
    EXPECT_NE(SnippetStore(directory).snippets()[0].id, store.snippets()[0].id) << "defaults get fresh ids until saved";
}

TEST(SnippetStore, unreadableFilesGiveTheDefaults)
{
    const QByteArray files[] = {"not json", "{}", R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"a"}])",
        R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"a","keyword":"b","text":"c"},7])"};
    for (const QByteArray &bytes : files) {
        QTemporaryDir directory;
        writeFile(directory.filePath(u"snippets.json"_s), bytes);
        SnippetStore store(directory.path());
        expectDefaults(store.snippets());
        store.setSnippets({});
        store.waitForSaved();
        const QStringList copies = QDir(directory.path()).entryList({u"snippets.json.unreadable-*"_s});
        ASSERT_EQ(copies.size(), 1) << "the user's file survives the next save";
        QFile copy(directory.filePath(copies.first()));
        ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
        EXPECT_EQ(copy.readAll(), bytes);
    }
}

TEST(SnippetStore, anEmptyArrayIsAnEmptyList)
{
    QTemporaryDir directory;
    writeFile(directory.filePath(u"snippets.json"_s), "[]");
    EXPECT_TRUE(SnippetStore(directory.path()).snippets().isEmpty());
}

TEST(SnippetStore, assignmentsNotifyAndAreSavedInOrder)
{
    QTemporaryDir directory;
    SnippetStore store(directory.path());
    QSignalSpy aboutToChange(&store, &SnippetStore::aboutToChange);
    QSignalSpy changed(&store, &SnippetStore::changed);

    QList<Snippet> snippets = store.snippets();
    const Snippet address{QUuid::createUuid(), u"Address"_s, u"addr"_s, u"1 Infinite Loop"_s};
    snippets.append(address);
    store.setSnippets(snippets);
    EXPECT_EQ(aboutToChange.count(), 1);
    EXPECT_EQ(changed.count(), 1);
    store.waitForSaved();

    const SnippetStore reloaded(directory.path());
    EXPECT_EQ(reloaded.snippets(), snippets);
    EXPECT_EQ(reloaded.snippets().last(), address);

    QFile file(store.url());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("[{\"")) << "compact JSON";
    EXPECT_FALSE(bytes.contains('\n'));
}

TEST(SnippetStore, aWriteErrorKeepsTheListAsAssigned)
{
    QTemporaryDir directory;
    SnippetStore store(directory.path());
    ASSERT_TRUE(QDir(directory.path()).mkdir(u"snippets.json"_s)) << "a folder where the file should be";
    const QList<Snippet> one{{QUuid::createUuid(), u"a"_s, u"b"_s, u"c"_s}};
    store.setSnippets(one);
    EXPECT_EQ(store.snippets(), one);
}

} // namespace
} // namespace tessary
