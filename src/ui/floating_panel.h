#pragma once

#include <QWidget>

#include <functional>

namespace tessary {

// A borderless window above other applications' windows: the launcher and the
// clipboard popup (which take the keyboard) and the toast (which takes neither
// keyboard nor mouse).
class FloatingPanel : public QWidget {
    Q_OBJECT

public:
    enum class Input { keyboard, none };

    explicit FloatingPanel(Input input, QWidget *parent = nullptr);

    // Runs when the panel stops being the active window and when Escape is pressed.
    std::function<void()> onResignKey;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void resignKey();
};

} // namespace tessary
