#include "platform/x11/windows/x11_properties.h"

#include <cstdlib>
#include <memory>

namespace tessary::X11Properties {
namespace {

struct FreeDeleter {
    void operator()(void *pointer) const { std::free(pointer); }
};
using PropertyReply = std::unique_ptr<xcb_get_property_reply_t, FreeDeleter>;

// Long enough for every list this backend reads (client lists, struts, hints).
constexpr uint32_t maxLength32 = 1u << 16;

PropertyReply read(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    if (property == XCB_ATOM_NONE)
        return nullptr;
    const auto cookie = xcb_get_property(connection, 0, window, property, type, 0, maxLength32);
    return PropertyReply(xcb_get_property_reply(connection, cookie, nullptr));
}

template <typename T> std::optional<QList<T>> listOf32(const PropertyReply &reply, xcb_atom_t type)
{
    if (!reply || reply->type != type || reply->format != 32)
        return std::nullopt;
    const int count = xcb_get_property_value_length(reply.get()) / 4;
    const auto *data = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    QList<T> list;
    list.reserve(count);
    for (int i = 0; i < count; ++i)
        list.append(static_cast<T>(data[i]));
    return list;
}

template <typename T>
std::optional<QList<T>> values32(
    xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    return listOf32<T>(read(connection, window, property, type), type);
}

} // namespace

std::optional<QList<quint32>> cardinals(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    return values32<quint32>(connection, window, property, XCB_ATOM_CARDINAL);
}

QList<xcb_atom_t> atoms(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    return values32<xcb_atom_t>(connection, window, property, XCB_ATOM_ATOM).value_or(QList<xcb_atom_t>());
}

QList<xcb_window_t> windows(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    return values32<xcb_window_t>(connection, window, property, XCB_ATOM_WINDOW).value_or(QList<xcb_window_t>());
}

std::optional<QByteArray> bytes(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    const PropertyReply reply = read(connection, window, property, XCB_GET_PROPERTY_TYPE_ANY);
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 8)
        return std::nullopt;
    return QByteArray(
        static_cast<const char *>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get()));
}

xcb_get_property_cookie_t request(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maxLength32);
}

std::optional<QList<quint32>> values32(xcb_connection_t *connection, xcb_get_property_cookie_t cookie, xcb_atom_t type)
{
    xcb_generic_error_t *error = nullptr;
    const PropertyReply reply(xcb_get_property_reply(connection, cookie, &error));
    std::free(error);
    return listOf32<quint32>(reply, type);
}

} // namespace tessary::X11Properties
