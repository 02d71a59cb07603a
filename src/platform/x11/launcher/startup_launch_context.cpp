#include "platform/x11/launcher/startup_launch_context.h"

#include <gio/gio.h>

namespace {

struct TessaryLaunchContext {
    GAppLaunchContext parent;
    char *startupId;
};

struct TessaryLaunchContextClass {
    GAppLaunchContextClass parent;
};

G_DEFINE_TYPE(TessaryLaunchContext, tessary_launch_context, G_TYPE_APP_LAUNCH_CONTEXT)

char *startupNotifyId(GAppLaunchContext *context, GAppInfo *, GList *)
{
    return g_strdup(reinterpret_cast<TessaryLaunchContext *>(context)->startupId);
}

void finalize(GObject *object)
{
    g_free(reinterpret_cast<TessaryLaunchContext *>(object)->startupId);
    G_OBJECT_CLASS(tessary_launch_context_parent_class)->finalize(object);
}

void tessary_launch_context_class_init(TessaryLaunchContextClass *type)
{
    G_OBJECT_CLASS(type)->finalize = finalize;
    G_APP_LAUNCH_CONTEXT_CLASS(type)->get_startup_notify_id = startupNotifyId;
}

void tessary_launch_context_init(TessaryLaunchContext *context) { context->startupId = nullptr; }

} // namespace

namespace tessary {

GAppLaunchContext *newStartupLaunchContext(const QByteArray &startupId)
{
    auto *context = static_cast<TessaryLaunchContext *>(g_object_new(tessary_launch_context_get_type(), nullptr));
    if (!startupId.isEmpty())
        context->startupId = g_strdup(startupId.constData());
    return G_APP_LAUNCH_CONTEXT(context);
}

} // namespace tessary
