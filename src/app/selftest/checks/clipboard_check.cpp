#include "app/selftest/checks/clipboard_check.h"

#include "core/clipboard/clipboard_store.h"
#include "platform/x11/clipboard/x11_pasteboard.h"
#include "platform/x11/x11_connection.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QUuid>

#include <utility>

#include <cstdlib>

namespace tessary {

namespace {

constexpr QLatin1String concealedType("x-kde-passwordManagerHint");

bool hasXFixes(X11Connection &x11)
{
    xcb_connection_t *connection = x11.connection();
    const QByteArray name("XFIXES");
    auto *reply = xcb_query_extension_reply(
        connection, xcb_query_extension(connection, uint16_t(name.size()), name.constData()), nullptr);
    const bool present = reply && reply->present;
    std::free(reply);
    return present;
}

bool hasOwner(X11Connection &x11, const QByteArray &selection)
{
    xcb_connection_t *connection = x11.connection();
    auto *reply
        = xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, x11.atom(selection)), nullptr);
    const bool owned = reply && reply->owner != XCB_WINDOW_NONE;
    std::free(reply);
    return owned;
}

// The MIME types of `data`, without the selection protocol's own targets.
std::unique_ptr<QMimeData> copyOf(const QMimeData *data)
{
    if (!data)
        return nullptr;
    auto copy = std::make_unique<QMimeData>();
    for (const QString &format : data->formats()) {
        if (format.contains(QLatin1Char('/')))
            copy->setData(format, data->data(format));
    }
    return copy->formats().isEmpty() ? nullptr : std::move(copy);
}

QMimeData *concealed(std::unique_ptr<QMimeData> data)
{
    data->setData(concealedType, "secret");
    return data.release();
}

} // namespace

ClipboardCheck::ClipboardCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Clipboard"))
    , m_context(context)
{
}

ClipboardCheck::~ClipboardCheck() = default;

void ClipboardCheck::run(Done done)
{
    const QString remedy = QStringLiteral("Run Tessary in an X11 session whose server offers the XFIXES extension.");
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    if (!m_scratch.isValid()) {
        done(CheckResult::failure(QStringLiteral("No scratch folder for the round trip's history."),
            QStringLiteral("Make the temporary folder (TMPDIR, else /tmp) writable.")));
        return;
    }
    if (!hasXFixes(*m_context.x11)) {
        done(CheckResult::failure(
            QStringLiteral("The X server lacks XFIXES: other applications' copies would go unnoticed."), remedy));
        return;
    }
    // Putting a copy back makes this process its owner, and the copy dies
    // with the process unless a clipboard manager takes it over on exit.
    if (hasOwner(*m_context.x11, "CLIPBOARD") && !hasOwner(*m_context.x11, "CLIPBOARD_MANAGER")) {
        done(CheckResult::warning(
            QStringLiteral("XFIXES reports copies; the round trip was left out so as not to "
                           "lose what the clipboard holds, as no clipboard manager would keep it."),
            QStringLiteral("Run the self-check with an empty clipboard, or with a clipboard manager running, to "
                           "include the round trip.")));
        return;
    }
    m_done = std::move(done);
    QClipboard *clipboard = QGuiApplication::clipboard();
    m_previous = copyOf(clipboard->mimeData());
    m_pasteboard = std::make_unique<X11Pasteboard>();
    m_store = std::make_unique<ClipboardStore>(m_scratch.path(), *m_pasteboard);
    m_pasteboard->setChangedHandler([this] {
        m_noticed = true;
        QTimer::singleShot(0, this, &ClipboardCheck::finish);
    });

    m_marker = QStringLiteral("Tessary self-check ") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    auto copy = std::make_unique<QMimeData>();
    copy->setText(m_marker);
    clipboard->setMimeData(concealed(std::move(copy)));
    m_store->ignoreCurrentChange();
    QTimer::singleShot(noticeTimeoutMs, this, &ClipboardCheck::finish);
}

void ClipboardCheck::finish()
{
    if (!m_done || m_finishing)
        return;
    m_finishing = true;
    m_pasteboard->readString([self = QPointer(this)](const std::optional<QString> &text) {
        if (self)
            self->conclude(text == self->m_marker);
    });
}

void ClipboardCheck::conclude(bool readBack)
{
    const bool noticed = m_noticed;
    m_store->poll();
    const bool recorded = !m_store->items().isEmpty();
    restore();
    const Done done = std::exchange(m_done, nullptr);
    const QString remedy = QStringLiteral("Report this with the output of tessary --selftest --json.");
    if (!noticed) {
        done(CheckResult::failure(
            QStringLiteral("No change notice arrived within %1 s of a copy.").arg(noticeTimeoutMs / 1000), remedy));
    } else if (!readBack) {
        done(CheckResult::failure(QStringLiteral("A copy did not read back from the clipboard."), remedy));
    } else if (recorded) {
        done(CheckResult::failure(
            QStringLiteral("Tessary's own copy was recorded as if the user had copied it."), remedy));
    } else {
        done(CheckResult::passed(QStringLiteral(
            "A copy was announced, read back and, being Tessary's own, not recorded; XFIXES reports other copies.")));
    }
}

void ClipboardCheck::restore()
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (m_previous)
        clipboard->setMimeData(concealed(std::move(m_previous)));
    else
        clipboard->clear();
}

} // namespace tessary
