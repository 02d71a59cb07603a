#include "platform/x11/launcher/session/dark_mode_switch.h"

#include "platform/x11/launcher/session/dbus_call.h"

#include <QDBusVariant>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <gio/gio.h>

namespace tessary {

namespace {

const char *const interfaceSchema = "org.gnome.desktop.interface";
const char *const colorSchemeKey = "color-scheme";

bool gnomeColorSchemeKnown()
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    GSettingsSchema *schema = source ? g_settings_schema_source_lookup(source, interfaceSchema, TRUE) : nullptr;
    if (!schema)
        return false;
    const bool known = g_settings_schema_has_key(schema, colorSchemeKey);
    g_settings_schema_unref(schema);
    return known;
}

DBusCall xfconf(const QString &method, QVariantList arguments)
{
    return {DarkModeSwitch::xfconfService, QStringLiteral("/org/xfce/Xfconf"), QStringLiteral("org.xfce.Xfconf"),
        method, std::move(arguments)};
}

// The theme to switch to from `current`: its light or dark sibling, when installed.
QString xfceSibling(const QString &current)
{
    if (current.endsWith(QLatin1String("-dark"), Qt::CaseInsensitive))
        return current.chopped(5);
    const QString dark = current + QStringLiteral("-dark");
    // GTK carries Adwaita's dark variant built in.
    if (current == QLatin1String("Adwaita"))
        return dark;
    const QString home = QStandardPaths::locate(
        QStandardPaths::HomeLocation, QStringLiteral(".themes/") + dark, QStandardPaths::LocateDirectory);
    const QString shared = QStandardPaths::locate(
        QStandardPaths::GenericDataLocation, QStringLiteral("themes/") + dark, QStandardPaths::LocateDirectory);
    return home.isEmpty() && shared.isEmpty() ? QString() : dark;
}

// Runs `program` without waiting; `done` gets its output, or nothing when it failed.
void runProcess(QObject *context, const QString &program, const QStringList &arguments,
    std::function<void(std::optional<QByteArray>)> done)
{
    auto *process = new QProcess(context);
    process->setStandardInputFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, context, [process, done](int code, QProcess::ExitStatus status) {
        process->deleteLater();
        if (status == QProcess::NormalExit && code == 0)
            done(process->readAllStandardOutput());
        else
            done(std::nullopt);
    });
    QObject::connect(process, &QProcess::errorOccurred, context, [process, done](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        process->deleteLater();
        done(std::nullopt);
    });
    process->start(program, arguments, QIODevice::ReadOnly);
}

} // namespace

DarkModeSwitch::DarkModeSwitch(DesktopFamily family, QDBusConnection session)
    : m_family(family)
    , m_session(std::move(session))
    , m_plasmaApply(family == DesktopFamily::kde
              ? QStandardPaths::findExecutable(QStringLiteral("plasma-apply-colorscheme"))
              : QString())
{
}

bool DarkModeSwitch::available(bool xfconfRunning) const
{
    switch (m_family) {
    case DesktopFamily::gnome:
        return gnomeColorSchemeKnown();
    case DesktopFamily::kde:
        return !m_plasmaApply.isEmpty();
    case DesktopFamily::xfce:
        return xfconfRunning;
    default:
        return false;
    }
}

void DarkModeSwitch::toggle(QObject *context, std::function<void(bool ok)> done) const
{
    switch (m_family) {
    case DesktopFamily::gnome:
        toggleGnome(std::move(done));
        return;
    case DesktopFamily::kde:
        toggleKde(context, std::move(done));
        return;
    case DesktopFamily::xfce:
        toggleXfce(context, std::move(done));
        return;
    default:
        done(false);
    }
}

void DarkModeSwitch::toggleGnome(std::function<void(bool)> done) const
{
    if (!gnomeColorSchemeKnown()) {
        done(false);
        return;
    }
    // GSettings writes through the dconf service without waiting for it.
    GSettings *settings = g_settings_new(interfaceSchema);
    gchar *current = g_settings_get_string(settings, colorSchemeKey);
    const bool dark = g_strcmp0(current, "prefer-dark") == 0;
    g_free(current);
    const bool written = g_settings_set_string(settings, colorSchemeKey, dark ? "default" : "prefer-dark");
    g_object_unref(settings);
    done(written);
}

void DarkModeSwitch::toggleKde(QObject *context, std::function<void(bool)> done) const
{
    const QString program = m_plasmaApply;
    runProcess(context, program, {QStringLiteral("--list-schemes")},
        [context, program, done](const std::optional<QByteArray> &listing) {
            if (!listing) {
                done(false);
                return;
            }
            // " * BreezeDark (current color scheme)"
            bool currentIsDark = false;
            for (const QByteArray &line : listing->split('\n')) {
                if (line.contains("(current color scheme)"))
                    currentIsDark = line.contains("Dark");
            }
            const QString next = currentIsDark ? QStringLiteral("BreezeLight") : QStringLiteral("BreezeDark");
            runProcess(context, program, {next},
                [done](const std::optional<QByteArray> &applied) { done(applied.has_value()); });
        });
}

void DarkModeSwitch::toggleXfce(QObject *context, std::function<void(bool)> done) const
{
    const QString channel = QStringLiteral("xsettings");
    const QString property = QStringLiteral("/Net/ThemeName");
    xfconf(QStringLiteral("GetProperty"), {channel, property})
        .send(m_session, context, [session = m_session, context, channel, property, done](const QDBusMessage &reply) {
            const QString current = succeeded(reply) && !reply.arguments().isEmpty()
                ? reply.arguments().constFirst().value<QDBusVariant>().variant().toString()
                : QString();
            const QString next = current.isEmpty() ? QString() : xfceSibling(current);
            if (next.isEmpty()) {
                done(false);
                return;
            }
            xfconf(QStringLiteral("SetProperty"), {channel, property, QVariant::fromValue(QDBusVariant(next))})
                .send(session, context, [done](const QDBusMessage &set) { done(succeeded(set)); });
        });
}

} // namespace tessary
