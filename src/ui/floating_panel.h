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

    // The radius of the rounded corners the keyboard panels' contents paint.
    static constexpr double cornerRadius = 16;

    explicit FloatingPanel(Input input, QWidget *parent = nullptr);

    // Where nothing blends translucent windows with what lies below (no
    // compositing manager on X11), their clear corners would show black: the
    // window is then cut to a rectangle with corners of `radius`, at every
    // size, and its contents drawn over the opaque window colour. 0 cuts
    // nothing.
    void cutToRoundedShape(double radius);

    // Runs when the panel stops being the active window and when Escape is pressed.
    std::function<void()> onResignKey;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void resignKey();
    void updateMask();

    double m_cutRadius = 0;
};

} // namespace tessary
