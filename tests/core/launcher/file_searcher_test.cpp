#include "core/launcher/file_searcher.h"

#include "platform/fake/launcher/fake_file_search_backend.h"

#include <gtest/gtest.h>

#include <optional>

namespace tessary {
namespace {

const QString home = QStringLiteral("/home/ada");

QStringList paths(const QList<QUrl> &urls)
{
    QStringList result;
    for (const QUrl &url : urls)
        result.append(url.toLocalFile());
    return result;
}

// Records every call of a completion.
struct Receiver {
    FileSearcher::Completion completion()
    {
        return [this](const QList<QUrl> &urls) {
            ++calls;
            last = paths(urls);
        };
    }
    int calls = 0;
    QStringList last;
};

TEST(FileSearcher, onlyTheLatestSearchDelivers)
{
    FakeFileSearchBackend backend;
    FileSearcher searcher(backend, home);
    Receiver first, second;
    searcher.search(QStringLiteral("rep"), 8, first.completion());
    searcher.search(QStringLiteral("repo"), 8, second.completion());
    ASSERT_EQ(backend.searches().size(), 2);
    EXPECT_TRUE(backend.searches().at(0).stopped) << "a new search stops the old one before starting";
    EXPECT_EQ(backend.searches().at(1).text, QStringLiteral("repo"));

    backend.deliver(0, {home + QStringLiteral("/old.txt")}); // a slow answer to the old query
    EXPECT_EQ(first.calls, 0);
    EXPECT_EQ(second.calls, 0);
    EXPECT_TRUE(searcher.isSearching());

    backend.deliver(1, {home + QStringLiteral("/report.txt")});
    backend.deliver(1, {home + QStringLiteral("/again.txt")});
    EXPECT_EQ(first.calls, 0);
    EXPECT_EQ(second.calls, 1);
    EXPECT_EQ(second.last, QStringList{home + QStringLiteral("/report.txt")});
    EXPECT_FALSE(searcher.isSearching());
}

TEST(FileSearcher, aCancelledOrDestroyedSearchNeverCallsBack)
{
    FakeFileSearchBackend backend;
    Receiver receiver;
    {
        FileSearcher searcher(backend, home);
        searcher.search(QStringLiteral("a"), 8, receiver.completion());
        searcher.cancel();
        EXPECT_TRUE(backend.searches().last().stopped);
        backend.deliver(0, {home + QStringLiteral("/a")});
        searcher.search(QStringLiteral("b"), 8, receiver.completion());
    }
    EXPECT_TRUE(backend.searches().last().stopped);
    backend.deliver(1, {home + QStringLiteral("/b")});
    EXPECT_EQ(receiver.calls, 0);
}

TEST(FileSearcher, noHitsCompleteOnceWithAnEmptyList)
{
    FakeFileSearchBackend backend;
    FileSearcher searcher(backend, home);
    Receiver receiver;
    receiver.last = QStringList{QStringLiteral("sentinel")};
    searcher.search(QStringLiteral("nothing"), 8, receiver.completion());
    backend.deliver(0, {});
    EXPECT_EQ(receiver.calls, 1);
    EXPECT_TRUE(receiver.last.isEmpty());
}

TEST(FileSearcher, skipsNoiseAndStopsAtTheLimitInDeliveredOrder)
{
    FakeFileSearchBackend backend;
    FileSearcher searcher(backend, home);
    QStringList found;
    for (int i = 0; i < 12; ++i) {
        found.append(home + QStringLiteral("/p/node_modules/f%1").arg(i)); // never counts toward the limit
        found.append(home + QStringLiteral("/docs/f%1.txt").arg(i));
    }
    struct Case {
        int limit;
        int expected;
    } const cases[] = {{8, 8}, {3, 3}, {20, 12}, {0, 0}};
    for (int i = 0; i < int(std::size(cases)); ++i) {
        Receiver receiver;
        searcher.search(QStringLiteral("f"), cases[i].limit, receiver.completion());
        backend.deliver(i, found);
        ASSERT_EQ(receiver.last.size(), cases[i].expected) << "limit " << cases[i].limit;
        for (int k = 0; k < cases[i].expected; ++k)
            EXPECT_EQ(receiver.last.at(k), home + QStringLiteral("/docs/f%1.txt").arg(k));
    }
}

TEST(FileSearcher, deliverableRules)
{
    struct Case {
        const char *path;
        bool delivered;
    } const cases[] = {
        {"/home/ada/docs/report.pdf", true},
        {"/home/ada/Library/Caches/x.db", false},
        {"/home/ada/Library", true},
        {"/home/ada/LibraryNotes/x.txt", true},
        {"/home/other/Library/x.txt", true},
        {"/home/ada/.config/app.conf", false},
        {"/home/ada/src/.git/HEAD", false},
        {"/home/ada/notes/.draft.md", false},
        {"/home/ada/web/node_modules/left-pad/index.js", false},
        {"/home/ada/web/node_modules_backup/index.js", true},
        {"/home/ada/Apps/Tool.app/Contents/Info.plist", false},
        {"/home/ada/Apps/Tool.app", true},
        {"/home/ada/release.v2/notes.txt", true},
    };
    for (const Case &c : cases)
        EXPECT_EQ(FileSearcher::isDeliverable(QString::fromLatin1(c.path), home), c.delivered) << c.path;
}

} // namespace
} // namespace tessary
