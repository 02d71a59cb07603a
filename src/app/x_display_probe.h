#pragma once

#include <QString>

#include <optional>

struct xcb_connection_t;

namespace tessary {

// Opens the X display ahead of Qt, which aborts when it cannot, so that the
// problem can be told first. The connection stays open until close() or
// destruction: a server with no other client resets when its last one leaves
// and drops a connection that arrives meanwhile, such as the application's.
class XDisplayProbe {
public:
    XDisplayProbe();
    ~XDisplayProbe();

    XDisplayProbe(const XDisplayProbe &) = delete;
    XDisplayProbe &operator=(const XDisplayProbe &) = delete;

    // Why the display cannot be opened ("there is no X display (DISPLAY is
    // not set)."), or none when it can.
    const std::optional<QString> &problem() const { return m_problem; }
    // Lets the display go, once the application holds a connection of its own.
    void close();

private:
    xcb_connection_t *m_connection = nullptr;
    std::optional<QString> m_problem;
};

} // namespace tessary
