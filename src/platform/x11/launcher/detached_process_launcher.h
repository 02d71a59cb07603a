#pragma once

#include "core/platform/process_launcher.h"

namespace tessary {

// Programs started through QProcess: detached children with their standard
// streams on the null device, so they never hold our terminal or block on it.
class DetachedProcessLauncher final : public ProcessLauncher {
public:
    bool start(const QString &program, const QStringList &arguments) override;
    std::optional<QByteArray> output(const QString &program, const QStringList &arguments) override;
};

} // namespace tessary
