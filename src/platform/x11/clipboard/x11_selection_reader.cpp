#include "platform/x11/clipboard/x11_selection_reader.h"

#include <QImageReader>
#include <QLoggingCategory>

#include <poll.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>

Q_LOGGING_CATEGORY(lcSelection, "tessary.clipboard.x11")

namespace tessary {

namespace {

struct FreeDeleter {
    void operator()(void *pointer) const { std::free(pointer); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeDeleter>;

constexpr QLatin1String pngType("image/png");
constexpr QLatin1String uriListType("text/uri-list");
// Text targets in the order of preference; all but STRING (Latin-1) carry UTF-8.
constexpr const char *textTargets[] = {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "STRING"};
// The waits for the owner are cut into slices so that stopping is noticed soon.
constexpr int pollSliceMs = 50;

bool isBlank(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
}

// The local files of a text/uri-list, in order; comments and other schemes are left out.
QList<QUrl> localFiles(const QByteArray &uriList)
{
    QList<QUrl> files;
    for (const QByteArray &line : uriList.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith('#'))
            continue;
        const QUrl url = QUrl::fromEncoded(trimmed);
        if (url.isLocalFile())
            files.append(url);
    }
    return files;
}

// The image target to ask for: PNG when offered, else the first one Qt decodes.
std::optional<QString> readableImageTarget(const QStringList &targets, const QList<QByteArray> &decodable)
{
    if (targets.contains(pngType))
        return QString(pngType);
    for (const QString &target : targets) {
        if (target.startsWith(QLatin1String("image/")) && decodable.contains(target.toLatin1()))
            return target;
    }
    return std::nullopt;
}

} // namespace

X11SelectionReader::X11SelectionReader(const QByteArray &displayName, xcb_connection_t *ownConnection)
{
    const xcb_setup_t *setup = xcb_get_setup(ownConnection);
    m_ownIdBase = setup->resource_id_base;
    m_ownIdMask = setup->resource_id_mask;
    m_decodableImageTypes = QImageReader::supportedMimeTypes();
    m_thread = std::thread([this, displayName] {
        m_connection = xcb_connect(displayName.constData(), nullptr);
        if (xcb_connection_has_error(m_connection)) {
            qCWarning(lcSelection) << "cannot connect to the X server; copies are not read";
        } else {
            xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
            m_window = xcb_generate_id(m_connection);
            const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1, 1, 0,
                XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
            xcb_flush(m_connection);
        }
        run();
        xcb_disconnect(m_connection);
    });
}

X11SelectionReader::~X11SelectionReader()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        m_jobs.clear();
    }
    m_wake.notify_one();
    m_thread.join();
}

void X11SelectionReader::read(QSet<QString> refusedTargets, Want want, Done done)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back({std::move(refusedTargets), want, std::move(done)});
    }
    m_wake.notify_one();
}

void X11SelectionReader::run()
{
    for (;;) {
        Job job;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
            if (m_stopping)
                return;
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        if (m_window == XCB_WINDOW_NONE || xcb_connection_has_error(m_connection))
            job.done(Outcome::nothing, {});
        else
            readOnce(job);
    }
}

void X11SelectionReader::readOnce(const Job &job)
{
    m_owner = owner();
    if (m_owner == XCB_WINDOW_NONE) {
        job.done(Outcome::nothing, {});
        return;
    }
    if ((m_owner & ~m_ownIdMask) == m_ownIdBase) {
        job.done(Outcome::own, {});
        return;
    }
    m_ownerChanged = false;
    Raw raw;
    raw.targets = targetNames(convert(atom("TARGETS"), maxTextBytes).value_or(QByteArray()));
    const bool refused = std::any_of(
        raw.targets.cbegin(), raw.targets.cend(), [&](const QString &t) { return job.refusedTargets.contains(t); });
    const bool everything = job.want == Want::everything;
    if (everything && !refused && !m_ownerChanged && raw.targets.contains(uriListType)) {
        if (const auto list = convert(atom(uriListType.latin1()), maxTextBytes))
            raw.fileUrls = localFiles(*list);
    }
    if (!refused && !m_ownerChanged && raw.fileUrls.isEmpty()) {
        for (const char *target : textTargets) {
            if (!raw.targets.contains(QLatin1String(target)))
                continue;
            if (const auto bytes = convert(atom(target), maxTextBytes)) {
                raw.text = qstrcmp(target, "STRING") == 0 ? QString::fromLatin1(*bytes) : QString::fromUtf8(*bytes);
                break;
            }
        }
    }
    if (everything && !refused && !m_ownerChanged && raw.fileUrls.isEmpty() && (!raw.text || isBlank(*raw.text))) {
        if (const auto target = readableImageTarget(raw.targets, m_decodableImageTypes))
            raw.imageBytes = convert(atom(target->toLatin1()), maxImageBytes).value_or(QByteArray());
    }
    // Targets of one owner and data of the next must never mix: a password
    // manager's hint would not cover the text read after it.
    if (m_ownerChanged) {
        job.done(Outcome::nothing, {});
        return;
    }
    job.done(Outcome::read, std::move(raw));
}

xcb_window_t X11SelectionReader::owner()
{
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection, xcb_get_selection_owner(m_connection, atom("CLIPBOARD")), nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
}

std::optional<QByteArray> X11SelectionReader::convert(xcb_atom_t target, qsizetype limit)
{
    const xcb_atom_t clipboard = atom("CLIPBOARD");
    const xcb_atom_t property = atom("TESSARY_SELECTION");
    xcb_delete_property(m_connection, m_window, property);
    xcb_convert_selection(m_connection, m_window, clipboard, target, property, XCB_CURRENT_TIME);
    // Asked right behind the request: the same owner then means the request
    // went to it, however long its answer takes and whoever copies meanwhile.
    if (owner() != m_owner) {
        m_ownerChanged = true;
        return std::nullopt;
    }
    Reply<xcb_generic_event_t> notify(waitForEvent([&](const xcb_generic_event_t *event) {
        if ((event->response_type & 0x7f) != XCB_SELECTION_NOTIFY)
            return false;
        const auto *selection = reinterpret_cast<const xcb_selection_notify_event_t *>(event);
        return selection->requestor == m_window && selection->selection == clipboard && selection->target == target;
    }));
    if (!notify || reinterpret_cast<xcb_selection_notify_event_t *>(notify.get())->property == XCB_ATOM_NONE)
        return std::nullopt;

    // Deleting the property as it is read tells an incremental owner to send the next piece.
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection,
        xcb_get_property(m_connection, 1, m_window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, UINT32_MAX / 4), nullptr));
    if (!reply)
        return std::nullopt;
    if (reply->type == atom("INCR")) {
        // The owner announces a lower bound of the size: room for it at once
        // spares copying many megabytes as the buffer grows.
        quint32 announced = 0;
        if (xcb_get_property_value_length(reply.get()) >= int(sizeof(announced)))
            std::memcpy(&announced, xcb_get_property_value(reply.get()), sizeof(announced));
        return receiveIncrementally(std::min<qsizetype>(announced, limit), limit);
    }
    const auto length = xcb_get_property_value_length(reply.get());
    return QByteArray(
        static_cast<const char *>(xcb_get_property_value(reply.get())), std::min<qsizetype>(length, limit));
}

std::optional<QByteArray> X11SelectionReader::receiveIncrementally(qsizetype expected, qsizetype limit)
{
    const xcb_atom_t property = atom("TESSARY_SELECTION");
    QByteArray data;
    data.reserve(expected);
    for (;;) {
        Reply<xcb_generic_event_t> event(waitForEvent([&](const xcb_generic_event_t *e) {
            if ((e->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
                return false;
            const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(e);
            return change->window == m_window && change->atom == property && change->state == XCB_PROPERTY_NEW_VALUE;
        }));
        if (!event)
            return std::nullopt;
        const Reply<xcb_get_property_reply_t> piece(xcb_get_property_reply(m_connection,
            xcb_get_property(m_connection, 1, m_window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, UINT32_MAX / 4),
            nullptr));
        if (!piece)
            return std::nullopt;
        const auto length = xcb_get_property_value_length(piece.get());
        if (length == 0)
            return data;
        // Past the limit the owner is left to time out: what follows is not wanted.
        if (data.size() + length > limit) {
            data.append(static_cast<const char *>(xcb_get_property_value(piece.get())), limit - data.size());
            return data;
        }
        data.append(static_cast<const char *>(xcb_get_property_value(piece.get())), length);
    }
}

xcb_generic_event_t *X11SelectionReader::waitForEvent(const std::function<bool(const xcb_generic_event_t *)> &matches)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(ownerTimeoutMs);
    pollfd descriptor{.fd = xcb_get_file_descriptor(m_connection), .events = POLLIN, .revents = 0};
    while (!m_stopping) {
        while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
            if (matches(event))
                return event;
            std::free(event);
        }
        if (xcb_connection_has_error(m_connection) || std::chrono::steady_clock::now() >= deadline)
            return nullptr;
        poll(&descriptor, 1, pollSliceMs);
    }
    return nullptr;
}

QStringList X11SelectionReader::targetNames(const QByteArray &atoms)
{
    QList<xcb_atom_t> values(atoms.size() / qsizetype(sizeof(xcb_atom_t)));
    if (values.isEmpty())
        return {};
    std::memcpy(values.data(), atoms.constData(), values.size() * sizeof(xcb_atom_t));
    // Names not seen before are asked for together: one wait for all of them.
    QHash<xcb_atom_t, xcb_get_atom_name_cookie_t> asked;
    for (const xcb_atom_t value : std::as_const(values)) {
        if (!m_atomNames.contains(value) && !asked.contains(value))
            asked.insert(value, xcb_get_atom_name(m_connection, value));
    }
    for (auto it = asked.cbegin(); it != asked.cend(); ++it) {
        const Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(m_connection, it.value(), nullptr));
        m_atomNames.insert(it.key(),
            reply ? QString::fromLatin1(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                  : QString());
    }
    QStringList names;
    for (const xcb_atom_t value : std::as_const(values)) {
        if (const QString &name = m_atomNames.value(value); !name.isEmpty() && !names.contains(name))
            names.append(name);
    }
    return names;
}

xcb_atom_t X11SelectionReader::atom(const QByteArray &name)
{
    if (const auto cached = m_atoms.constFind(name); cached != m_atoms.cend())
        return *cached;
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr));
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    if (value != XCB_ATOM_NONE)
        m_atoms.insert(name, value);
    return value;
}

} // namespace tessary
