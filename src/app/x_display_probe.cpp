#include "app/x_display_probe.h"

#include <xcb/xcb.h>

namespace tessary {

XDisplayProbe::XDisplayProbe()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        m_problem = QStringLiteral("there is no X display (DISPLAY is not set).");
        return;
    }
    m_connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(m_connection) != 0) {
        close();
        m_problem = QStringLiteral("cannot open the X display \"%1\".").arg(qEnvironmentVariable("DISPLAY"));
    }
}

XDisplayProbe::~XDisplayProbe() { close(); }

void XDisplayProbe::close()
{
    // xcb_disconnect also frees a connection that failed.
    if (m_connection)
        xcb_disconnect(m_connection);
    m_connection = nullptr;
}

} // namespace tessary
