#include "host/devicetask/GLibLog.h"

#include <QLoggingCategory>

#include <arv.h>
#include <mutex>

Q_LOGGING_CATEGORY(lcAravis, "vexa.devicetask.aravis", QtInfoMsg)

namespace {

void pass(const gchar *domain, GLogLevelFlags level, const gchar *message, gpointer)
{
    if ((level & G_LOG_FLAG_FATAL) != 0) {
        g_log_default_handler(domain, level, message, nullptr);
    } else if ((level & (G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) != 0) {
        qCInfo(lcAravis, "%s: %s", domain ? domain : "GLib", message);
    } else {
        qCDebug(lcAravis, "%s: %s", domain ? domain : "GLib", message);
    }
}

} // namespace

void GLibLog::install()
{
    static std::once_flag s_once;
    std::call_once(s_once, [] { g_log_set_default_handler(pass, nullptr); });
}
