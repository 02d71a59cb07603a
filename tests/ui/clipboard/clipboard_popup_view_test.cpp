#include "ui/clipboard/clipboard_popup_view.h"

#include "core/clipboard/clip_popup_model.h"
#include "core/clipboard/clipboard_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "ui/clipboard/thumbnail_cache.h"

#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace tessary {
namespace {

class ClipboardPopupViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_model.close = [this] { m_calls.append(QStringLiteral("close")); };
        m_model.pasteItem = [this](const ClipItem &item, bool copyOnly) {
            m_calls.append((copyOnly ? QStringLiteral("copy ") : QStringLiteral("paste ")) + *item.text);
        };
    }
    void copy(const QStringList &texts)
    {
        for (const QString &text : texts) {
            m_pasteboard.copyText(text);
            m_store.poll();
        }
    }
    ClipboardPopupView &open()
    {
        m_view = std::make_unique<ClipboardPopupView>(m_model, m_store);
        m_view->setFixedWidth(ClipboardPopupView::width);
        m_view->show();
        return *m_view;
    }
    qsizetype pinned() const
    {
        return std::count_if(
            m_store.items().cbegin(), m_store.items().cend(), [](const ClipItem &item) { return item.pinned; });
    }

    QTemporaryDir m_temp;
    FakePasteboard m_pasteboard;
    ClipboardStore m_store{m_temp.path(), m_pasteboard};
    ClipPopupModel m_model{m_store};
    std::unique_ptr<ClipboardPopupView> m_view;
    QStringList m_calls;
};

TEST_F(ClipboardPopupViewTest, KeysActOnTheModelOrReachTheField)
{
    struct Case {
        const char *name;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool autoRepeat;
        int selection;
        QStringList calls;
        qsizetype items;
        qsizetype pinned;
        QString field; // it starts as "q", set without editing the query
    };
    const QString q = QStringLiteral("q");
    const QString two = QStringLiteral("two");
    const Case cases[] = {
        {"down", Qt::Key_Down, Qt::NoModifier, false, 2, {}, 3, 0, q},
        {"up, held", Qt::Key_Up, Qt::NoModifier, true, 0, {}, 3, 0, q},
        {"return pastes", Qt::Key_Return, Qt::NoModifier, false, 1,
            {QStringLiteral("close"), QStringLiteral("paste two")}, 3, 0, q},
        {"shift+return copies", Qt::Key_Return, Qt::ShiftModifier, false, 1,
            {QStringLiteral("close"), QStringLiteral("copy two")}, 3, 0, q},
        {"ctrl+backspace deletes", Qt::Key_Backspace, Qt::ControlModifier, false, 1, {}, 2, 0, q},
        {"backspace edits the field", Qt::Key_Backspace, Qt::NoModifier, false, 1, {}, 3, 0, QString()},
        {"ctrl+p pins", Qt::Key_P, Qt::ControlModifier, false, 1, {}, 3, 1, q},
        {"ctrl+p held does not pin", Qt::Key_P, Qt::ControlModifier, true, 1, {}, 3, 0, q},
        {"p is typed and resets the selection", Qt::Key_P, Qt::NoModifier, false, 0, {}, 3, 0, QStringLiteral("qp")},
        {"escape closes", Qt::Key_Escape, Qt::NoModifier, false, 1, {QStringLiteral("close")}, 3, 0, q},
    };
    for (const Case &c : cases) {
        m_store.clear(false);
        copy({QStringLiteral("one"), two, QStringLiteral("three")});
        ClipboardPopupView &view = open();
        m_calls.clear();
        view.searchField()->setText(QStringLiteral("q"));
        m_model.setSelection(1);

        QKeyEvent press(QEvent::KeyPress, c.key, c.modifiers,
            c.key == Qt::Key_P && c.modifiers == Qt::NoModifier ? QStringLiteral("p") : QString(), c.autoRepeat);
        QCoreApplication::sendEvent(view.searchField(), &press);

        EXPECT_EQ(m_model.selection(), c.selection) << c.name;
        EXPECT_EQ(m_calls, c.calls) << c.name;
        EXPECT_EQ(m_store.items().size(), c.items) << c.name;
        EXPECT_EQ(pinned(), c.pinned) << c.name;
        EXPECT_EQ(view.searchField()->text(), c.field) << c.name;
    }
}

TEST_F(ClipboardPopupViewTest, ShowsTheEmptyStatesAndCopiesArrivingWhileOpen)
{
    ClipboardPopupView &view = open();
    EXPECT_TRUE(view.searchField()->hasFocus() || !view.isActiveWindow());
    EXPECT_EQ(view.emptyText(), QString::fromUtf16(ClipboardPopupView::emptyHistory));

    copy({QStringLiteral("alpha")});
    EXPECT_EQ(view.emptyText(), QString());
    EXPECT_EQ(view.list()->model()->rowCount(), 1);

    QTest::keyClicks(view.searchField(), QStringLiteral("zz"));
    EXPECT_EQ(view.emptyText(), QString::fromUtf16(ClipboardPopupView::noMatches));
}

TEST_F(ClipboardPopupViewTest, AClickPastesThatRow)
{
    copy({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    ClipboardPopupView &view = open();
    QListView *list = view.list();
    const QRect row = list->visualRect(list->model()->index(2, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(m_calls, (QStringList{QStringLiteral("close"), QStringLiteral("paste one")}));
}

TEST(ThumbnailCache, CutsPicturesToSquaresAndReportsMissingFiles)
{
    QTemporaryDir temp;
    const QString wide = temp.filePath(QStringLiteral("wide.png"));
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(wide));
    const QString gone = temp.filePath(QStringLiteral("gone.png"));

    ThumbnailCache cache(34);
    QSignalSpy finished(&cache, &ThumbnailCache::finished);
    QPixmap thumbnail;
    EXPECT_EQ(cache.lookup(wide, thumbnail), ThumbnailCache::State::loading);
    EXPECT_EQ(cache.lookup(gone, thumbnail), ThumbnailCache::State::loading);
    EXPECT_EQ(cache.lookup(wide, thumbnail), ThumbnailCache::State::loading) << "decoded once";
    ASSERT_TRUE(finished.wait(5000) && (finished.size() == 2 || finished.wait(5000)));
    EXPECT_EQ(finished.size(), 2);

    EXPECT_EQ(cache.lookup(gone, thumbnail), ThumbnailCache::State::missing);
    ASSERT_EQ(cache.lookup(wide, thumbnail), ThumbnailCache::State::ready);
    EXPECT_EQ(thumbnail.size(), QSize(34, 34));
    EXPECT_EQ(thumbnail.toImage().pixelColor(17, 17), QColor(Qt::red));
}

} // namespace
} // namespace tessary
