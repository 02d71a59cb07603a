#pragma once

#include <QString>

namespace tessary {

// A private XDG world for GIO, set up before main() because GLib reads the XDG
// variables once per process: empty data and config homes, the system's data
// dirs, no session bus, and a "recorder" application that is the default
// handler for web links, plain text and folders and appends each argument it
// is started with to a log.
class GioTestEnvironment {
public:
    static const GioTestEnvironment &instance();

    QString dataHome() const { return m_root + QStringLiteral("/data"); }
    QString recorderEntry() const { return dataHome() + QStringLiteral("/applications/tessary-recorder.desktop"); }
    // Waits up to five seconds for a logged line containing `text`.
    bool recorderLogged(const QString &text) const;

private:
    GioTestEnvironment();

    QString m_root;
};

} // namespace tessary
