#pragma once

#include "core/shortcuts/key_combo.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace tessary {

class KeyPositions;

// Shows a shortcut and records a new one: a click (or Space while it has the
// keyboard) starts recording, the next key with at least one modifier (or
// F1–F12 alone) is reported through onChange by its physical position,
// Backspace or Delete report "no shortcut", Escape or a click elsewhere cancel. The recorder never stores
// anything: it shows whatever combo its owner passes back. While recording it
// holds the keyboard, so no shortcut of this or another program fires.
// Main thread only; `positions` must outlive the recorder.
class ShortcutRecorder : public QWidget {
    Q_OBJECT

public:
    explicit ShortcutRecorder(const KeyPositions &positions, QWidget *parent = nullptr);
    ~ShortcutRecorder() override;

    std::optional<KeyCombo> combo() const { return m_combo; }
    void setCombo(const std::optional<KeyCombo> &combo);
    bool isRecording() const { return m_recording; }
    // What the control shows now.
    QString text() const;

    // A recorded combo, or none when the user cleared the shortcut.
    std::function<void(const std::optional<KeyCombo> &)> onChange;
    // True when recording starts, false when it ends.
    std::function<void(bool)> onRecording;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    // The modifier mask of a key event's modifiers.
    static std::uint32_t modifierMask(Qt::KeyboardModifiers modifiers);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void startRecording();
    void stopRecording();
    void record(const QKeyEvent &event);

    const KeyPositions &m_positions;
    std::optional<KeyCombo> m_combo;
    bool m_recording = false;
};

} // namespace tessary
