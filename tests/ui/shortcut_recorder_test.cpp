#include "platform/fake/app/fake_key_positions.h"
#include "ui/settings/shortcut_recorder.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

// X keycodes of a US keyboard for the keys the table presses.
enum NativeKey : quint32 { escape = 9, backspace = 22, q = 24, u = 30, f5 = 71, del = 119, unmapped = 250 };

class ShortcutRecorderTest : public ::testing::Test {
protected:
    ShortcutRecorderTest()
    {
        positions.codes = {{escape, 53}, {backspace, 51}, {q, 12}, {u, 32}, {f5, 96}, {del, 117}};
        auto *layout = new QHBoxLayout(&window);
        recorder = new ShortcutRecorder(positions, &window);
        elsewhere = new QLineEdit(&window);
        layout->addWidget(recorder);
        layout->addWidget(elsewhere);
        recorder->setCombo(KeyCombo{123, 6144});
        recorder->onChange = [this](const std::optional<KeyCombo> &combo) { changes.push_back(combo); };
        recorder->onRecording = [this](bool on) { recordingCalls.push_back(on); };
        window.show();
    }

    void press(quint32 native, int key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, native, 0, 0);
        QApplication::sendEvent(recorder, &event);
    }

    FakeKeyPositions positions;
    QWidget window;
    ShortcutRecorder *recorder = nullptr;
    QLineEdit *elsewhere = nullptr;
    std::vector<std::optional<KeyCombo>> changes;
    std::vector<bool> recordingCalls;
};

TEST_F(ShortcutRecorderTest, aClickStartsRecordingAndShowsThePrompt)
{
    EXPECT_EQ(recorder->text(), QStringLiteral("Ctrl+Alt+Left"));
    QTest::mouseClick(recorder, Qt::LeftButton);
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(recorder->text(), QString::fromUtf16(u"Type shortcut\u2026"));
    EXPECT_EQ(recordingCalls, std::vector<bool>{true});
    recorder->setCombo(std::nullopt);
    recorder->onChange = nullptr;
    press(escape, Qt::Key_Escape, Qt::NoModifier);
    EXPECT_EQ(recorder->text(), QStringLiteral("Not set"));
}

struct KeyCase {
    const char *name;
    quint32 native;
    int key;
    Qt::KeyboardModifiers modifiers;
    // Empty: no onChange; holding an empty optional: cleared.
    std::vector<std::optional<KeyCombo>> changes;
    bool stillRecording;
};

TEST_F(ShortcutRecorderTest, keysWhileRecording)
{
    const Qt::KeyboardModifiers ctrlAlt = Qt::ControlModifier | Qt::AltModifier;
    const KeyCase cases[] = {
        {"Ctrl+Alt+U", u, Qt::Key_U, ctrlAlt, {KeyCombo{32, 6144}}, false},
        {"U alone beeps and keeps recording", u, Qt::Key_U, Qt::NoModifier, {}, true},
        {"F5 alone", f5, Qt::Key_F5, Qt::NoModifier, {KeyCombo{96, 0}}, false},
        {"Backspace clears", backspace, Qt::Key_Backspace, Qt::NoModifier, {std::nullopt}, false},
        {"Delete with modifiers clears", del, Qt::Key_Delete, ctrlAlt, {std::nullopt}, false},
        {"Escape keeps the shortcut", escape, Qt::Key_Escape, Qt::NoModifier, {}, false},
        {"Ctrl+Q is recorded, not run", q, Qt::Key_Q, Qt::ControlModifier, {KeyCombo{12, 4096}}, false},
        {"Super+Shift+U", u, Qt::Key_U, Qt::MetaModifier | Qt::ShiftModifier, {KeyCombo{32, 768}}, false},
        {"a key without a position", unmapped, Qt::Key_unknown, ctrlAlt, {}, true},
        {"a modifier on its own", 37, Qt::Key_Control, Qt::ControlModifier, {}, true},
    };
    for (const KeyCase &c : cases) {
        changes.clear();
        recordingCalls.clear();
        QTest::mouseClick(recorder, Qt::LeftButton);
        press(c.native, c.key, c.modifiers);
        EXPECT_EQ(changes, c.changes) << c.name;
        EXPECT_EQ(recorder->isRecording(), c.stillRecording) << c.name;
        const std::vector<bool> expected = c.stillRecording ? std::vector<bool>{true} : std::vector<bool>{true, false};
        EXPECT_EQ(recordingCalls, expected) << c.name;
        // The shown combo is the owner's to change.
        EXPECT_EQ(recorder->combo(), (KeyCombo{123, 6144})) << c.name;
        if (recorder->isRecording())
            press(escape, Qt::Key_Escape, Qt::NoModifier);
    }
}

TEST_F(ShortcutRecorderTest, aShortcutOfTheWindowIsRecordedInstead)
{
    bool fired = false;
    auto *quit = new QAction(&window);
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    QObject::connect(quit, &QAction::triggered, [&fired] { fired = true; });
    window.addAction(quit);
    // QTest sends no hardware keycode: let 0 be the Q key here.
    positions.codes.insert(0, 12);
    // Through the window, as the platform delivers keys, so shortcuts apply.
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    elsewhere->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Q, Qt::ControlModifier);
    ASSERT_TRUE(fired);
    fired = false;
    QTest::mouseClick(recorder, Qt::LeftButton);
    QTest::keyClick(window.windowHandle(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(fired);
    EXPECT_EQ(changes, (std::vector<std::optional<KeyCombo>>{KeyCombo{12, 4096}}));
}

TEST_F(ShortcutRecorderTest, aClickElsewhereEndsRecordingWithoutAChange)
{
    QTest::mouseClick(recorder, Qt::LeftButton);
    QTest::mouseClick(elsewhere, Qt::LeftButton);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(recordingCalls, (std::vector<bool>{true, false}));
}

TEST_F(ShortcutRecorderTest, keysWhileIdleArePassedOnButSpaceStartsRecording)
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_U, Qt::ControlModifier, u, 0, 0);
    event.setAccepted(true);
    QApplication::sendEvent(recorder, &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_TRUE(changes.empty());
    EXPECT_FALSE(recorder->isRecording());

    press(65, Qt::Key_Space, Qt::NoModifier);
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(recordingCalls, std::vector<bool>{true});
}

} // namespace
} // namespace tessary
