#include "core/clipboard/clip_popup_model.h"

#include "core/clipboard/clipboard_store.h"
#include "core/clipboard/relative_date_formatter.h"
#include "platform/fake/clipboard/fake_pasteboard.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace tessary {
namespace {

class ClipPopupModelTest : public ::testing::Test {
protected:
    // Copies `texts` in order, so the last one is the newest (row 0).
    void copy(const QStringList &texts)
    {
        for (const QString &text : texts) {
            m_pasteboard.copyText(text);
            m_store.poll();
        }
    }
    QStringList rowTexts() const
    {
        QStringList result;
        for (const ClipItem &item : m_model.results())
            result.append(item.text.value_or(QString()));
        return result;
    }
    QString currentText() const { return m_model.current() ? m_model.current()->text.value_or(QString()) : QString(); }

    QTemporaryDir m_temp;
    FakePasteboard m_pasteboard;
    ClipboardStore m_store{m_temp.path(), m_pasteboard};
    ClipPopupModel m_model{m_store};
};

TEST_F(ClipPopupModelTest, MovesWithinTheResults)
{
    m_model.move(1);
    EXPECT_EQ(m_model.selection(), 0) << "no results: nothing moves";
    EXPECT_FALSE(m_model.current());

    copy({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    struct Step {
        int by;
        int expected;
    };
    for (const Step step : {Step{-1, 0}, Step{1, 1}, Step{1, 2}, Step{1, 2}, Step{-5, 0}, Step{9, 2}}) {
        m_model.move(step.by);
        EXPECT_EQ(m_model.selection(), step.expected) << "after a step of " << step.by;
    }
    EXPECT_EQ(currentText(), QStringLiteral("one"));
}

TEST_F(ClipPopupModelTest, TypingReturnsToTheFirstRow)
{
    copy({QStringLiteral("apple pie"), QStringLiteral("banana"), QStringLiteral("apple tart")});
    m_model.move(2);
    m_model.setQuery(QStringLiteral("a"));
    EXPECT_EQ(m_model.selection(), 0);
    m_model.setQuery(QStringLiteral("apple"));
    EXPECT_EQ(rowTexts(), (QStringList{QStringLiteral("apple tart"), QStringLiteral("apple pie")}));

    m_model.setQuery(QStringLiteral("cherry"));
    EXPECT_TRUE(m_model.results().isEmpty());
    EXPECT_FALSE(m_model.current());
}

TEST_F(ClipPopupModelTest, DeletingKeepsTheSelectionWithinTheRest)
{
    copy({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    m_model.move(1);
    m_model.deleteCurrent();
    EXPECT_EQ(rowTexts(), (QStringList{QStringLiteral("three"), QStringLiteral("one")}));
    EXPECT_EQ(m_model.selection(), 1) << "the next row takes the deleted one's place";

    m_model.deleteCurrent();
    EXPECT_EQ(m_model.selection(), 0) << "deleting the last row selects the new last row";
    m_model.deleteCurrent();
    EXPECT_EQ(m_model.selection(), 0);
    EXPECT_TRUE(m_store.items().isEmpty());
    m_model.deleteCurrent();
    EXPECT_EQ(m_model.selection(), 0);
}

TEST_F(ClipPopupModelTest, DeletingTheLastOfThreeSelectsTheSecond)
{
    copy({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    m_model.move(2);
    m_model.deleteCurrent();
    EXPECT_EQ(m_model.selection(), 1);
    EXPECT_EQ(currentText(), QStringLiteral("two"));
}

TEST_F(ClipPopupModelTest, PinningMovesTheEntryUpWhileTheSelectionStays)
{
    copy({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    m_model.move(2);
    m_model.togglePinCurrent();
    EXPECT_EQ(rowTexts(), (QStringList{QStringLiteral("one"), QStringLiteral("three"), QStringLiteral("two")}));
    EXPECT_TRUE(m_model.results().first().pinned);
    EXPECT_EQ(m_model.selection(), 2);
}

TEST_F(ClipPopupModelTest, ChoosingClosesThenHandsOverTheEntry)
{
    QStringList calls;
    m_model.close = [&] { calls.append(QStringLiteral("close")); };
    m_model.pasteItem = [&](const ClipItem &item, bool copyOnly) {
        calls.append(*item.text + (copyOnly ? QStringLiteral(" copy") : QStringLiteral(" paste")));
    };
    EXPECT_FALSE(m_model.choose(false));
    EXPECT_TRUE(calls.isEmpty()) << "without an entry the popup stays open";

    copy({QStringLiteral("one"), QStringLiteral("two")});
    m_model.move(1);
    EXPECT_TRUE(m_model.choose(false));
    EXPECT_TRUE(m_model.choose(true));
    EXPECT_EQ(calls,
        (QStringList{QStringLiteral("close"), QStringLiteral("one paste"), QStringLiteral("close"),
            QStringLiteral("one copy")}));
}

TEST(ClipPopupDetailLine, NamesTheSourceAndTheDateInTheUsersLanguage)
{
    struct Case {
        std::optional<QString> sourceApp;
        qint64 secondsAgo;
        const char *locale;
        QString expected;
    };
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1'800'000'000, QTimeZone::utc());
    const Case cases[] = {
        {QStringLiteral("com.apple.Safari"), 300, "en_US", QStringLiteral("Safari \u00B7 5 minutes ago")},
        {QStringLiteral("xterm"), 86'400 + 60, "en_US", QStringLiteral("xterm \u00B7 yesterday")},
        {std::nullopt, 3 * 3'600 + 59, "en_US", QStringLiteral("\u2014 \u00B7 3 hours ago")},
        {QString(), 0, "en_US", QStringLiteral("\u2014 \u00B7 now")},
        {std::nullopt, 1, "C", QStringLiteral("\u2014 \u00B7 1 second ago")},
        {QStringLiteral("org.gnome.Terminal"), 300, "de_DE", QStringLiteral("Terminal \u00B7 vor 5 Minuten")},
    };
    for (const Case &c : cases) {
        ClipItem item;
        item.sourceApp = c.sourceApp;
        item.date = now.addSecs(-c.secondsAgo);
        const RelativeDateFormatter dates{QLocale(QString::fromLatin1(c.locale))};
        EXPECT_EQ(ClipPopupModel::detailLine(item, now, dates), c.expected) << c.locale << " " << c.secondsAgo;
    }
}

} // namespace
} // namespace tessary
