#pragma once

#include <QLoggingCategory>

namespace tessary {

// Diagnostics of hot key registration ("tessary.shortcuts").
Q_DECLARE_LOGGING_CATEGORY(lcShortcuts)

} // namespace tessary
