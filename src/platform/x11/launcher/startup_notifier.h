#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>

#include <cstdint>

typedef struct SnDisplay SnDisplay;
typedef struct SnLauncherContext SnLauncherContext;

namespace tessary {

class X11Connection;

// Announces program launches to the desktop by the startup-notification
// protocol, so that it shows launch feedback and the new window is allowed to
// take the focus. The sequence carries the time of the user's last key or
// button press, which window managers compare against other windows' times.
// Main thread.
class StartupNotifier final : public QAbstractNativeEventFilter {
public:
    explicit StartupNotifier(X11Connection &x11);
    ~StartupNotifier() override;
    StartupNotifier(const StartupNotifier &) = delete;
    StartupNotifier &operator=(const StartupNotifier &) = delete;

    struct Launch {
        QByteArray name;
        QByteArray binary;
        QByteArray icon;
        QByteArray wmClass;
    };

    // One launch sequence; the desktop ends it when the program's window maps.
    class Sequence {
    public:
        explicit Sequence(SnLauncherContext *context);
        Sequence(Sequence &&other) noexcept;
        ~Sequence();
        Sequence(const Sequence &) = delete;
        Sequence &operator=(const Sequence &) = delete;
        Sequence &operator=(Sequence &&) = delete;

        // For the program's DESKTOP_STARTUP_ID.
        QByteArray startupId() const;
        // Ends the sequence of a program that did not start.
        void cancel();

    private:
        SnLauncherContext *m_context;
    };

    Sequence begin(const Launch &launch);

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    X11Connection &m_x11;
    SnDisplay *m_display;
    uint32_t m_userTime = 0;
};

} // namespace tessary
