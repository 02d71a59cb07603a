#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace tessary {

// Turns SIGTERM, SIGINT and SIGHUP into a queued signal on the main thread,
// so that the process ends through the event loop and every destructor runs
// (queued file writes land first). One instance per process; main thread only.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

Q_SIGNALS:
    void received(int signalNumber);

private:
    void onReadable();

    int m_fds[2] = {-1, -1};
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace tessary
