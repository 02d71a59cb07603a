#include "ui/settings/shortcut_recorder.h"

#include "core/platform/key_positions.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace tessary {

namespace {

constexpr int deleteKey = 51;
constexpr int forwardDeleteKey = 117;
constexpr int escapeKey = 53;
constexpr int idleWidth = 150;
constexpr int controlHeight = 24;

bool isModifierKey(int key)
{
    switch (key) {
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Shift:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

} // namespace

ShortcutRecorder::ShortcutRecorder(const KeyPositions &positions, QWidget *parent)
    : QWidget(parent)
    , m_positions(positions)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

ShortcutRecorder::~ShortcutRecorder()
{
    if (m_recording)
        qApp->removeEventFilter(this);
}

void ShortcutRecorder::setCombo(const std::optional<KeyCombo> &combo)
{
    if (m_combo == combo)
        return;
    m_combo = combo;
    updateGeometry();
    update();
}

QString ShortcutRecorder::text() const
{
    if (m_recording)
        return QString::fromUtf16(u"Type shortcut\u2026");
    return m_combo ? m_combo->display() : QStringLiteral("Not set");
}

QSize ShortcutRecorder::sizeHint() const
{
    // Words notation can outgrow the usual width ("Ctrl+Alt+Super+Page Down").
    const int textWidth = fontMetrics().horizontalAdvance(text()) + 16;
    return {std::max(idleWidth, textWidth), controlHeight};
}

std::uint32_t ShortcutRecorder::modifierMask(Qt::KeyboardModifiers modifiers)
{
#ifdef Q_OS_MACOS
    // Qt swaps them on macOS: ControlModifier is ⌘, MetaModifier is ⌃.
    const Qt::KeyboardModifier controlBit = Qt::MetaModifier;
    const Qt::KeyboardModifier commandBit = Qt::ControlModifier;
#else
    const Qt::KeyboardModifier controlBit = Qt::ControlModifier;
    const Qt::KeyboardModifier commandBit = Qt::MetaModifier;
#endif
    std::uint32_t mask = 0;
    if (modifiers & controlBit)
        mask |= KeyCombo::control;
    if (modifiers & Qt::AltModifier)
        mask |= KeyCombo::option;
    if (modifiers & Qt::ShiftModifier)
        mask |= KeyCombo::shift;
    if (modifiers & commandBit)
        mask |= KeyCombo::command;
    return mask;
}

bool ShortcutRecorder::event(QEvent *event)
{
    if (m_recording) {
        // Tab, Ctrl+Q and the like are keys to record, not focus moves or shortcuts.
        if (event->type() == QEvent::ShortcutOverride) {
            event->accept();
            return true;
        }
        if (event->type() == QEvent::KeyPress) {
            keyPressEvent(static_cast<QKeyEvent *>(event));
            return true;
        }
    }
    return QWidget::event(event);
}

bool ShortcutRecorder::eventFilter(QObject *watched, QEvent *event)
{
    // A click anywhere else ends recording, also where nothing takes the focus.
    if (event->type() == QEvent::MouseButtonPress && m_recording) {
        const auto *target = qobject_cast<QWidget *>(watched);
        if (target && target != this && !isAncestorOf(target))
            stopRecording();
    }
    return QWidget::eventFilter(watched, event);
}

void ShortcutRecorder::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    startRecording();
}

void ShortcutRecorder::keyPressEvent(QKeyEvent *event)
{
    if (!m_recording) {
        // Space presses the control, as it presses a button.
        if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
            event->accept();
            startRecording();
            return;
        }
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    record(*event);
}

void ShortcutRecorder::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    if (m_recording)
        stopRecording();
    update();
}

void ShortcutRecorder::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void ShortcutRecorder::startRecording()
{
    setFocus(Qt::MouseFocusReason);
    if (!m_recording)
        qApp->installEventFilter(this);
    m_recording = true;
    grabKeyboard();
    updateGeometry();
    update();
    if (onRecording)
        onRecording(true);
}

void ShortcutRecorder::stopRecording()
{
    if (!m_recording)
        return;
    m_recording = false;
    qApp->removeEventFilter(this);
    releaseKeyboard();
    updateGeometry();
    update();
    if (onRecording)
        onRecording(false);
}

void ShortcutRecorder::record(const QKeyEvent &event)
{
    if (isModifierKey(event.key()))
        return;
    const int code = m_positions.keyCode(event.nativeScanCode());
    if (code == deleteKey || code == forwardDeleteKey) {
        if (onChange)
            onChange(std::nullopt);
    } else if (code != escapeKey) {
        const std::uint32_t mask = modifierMask(event.modifiers());
        if (code < 0 || (mask == 0 && !KeyCombo::isFunctionKey(std::uint32_t(code)))) {
            QApplication::beep();
            return;
        }
        if (onChange)
            onChange(KeyCombo{std::uint32_t(code), mask});
    }
    stopRecording();
    clearFocus();
}

void ShortcutRecorder::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    const QColor accent = palette().color(QPalette::Highlight);
    QColor fill = accent;
    fill.setAlphaF(0.15f);
    painter.fillPath(shape, m_recording ? fill : palette().color(QPalette::Base));
    // Idle with the keyboard: the accent outline says Space would start recording.
    painter.setPen(m_recording || hasFocus() ? accent : palette().color(QPalette::Mid));
    painter.drawPath(shape);
    const bool secondary = m_recording || !m_combo;
    painter.setPen(palette().color(secondary ? QPalette::PlaceholderText : QPalette::Text));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace tessary
