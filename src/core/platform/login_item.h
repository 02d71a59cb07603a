#pragma once

#include <QString>

#include <optional>

namespace tessary {

// Whether Tessary opens when the user logs in. Main thread only; calls touch
// at most one small file.
class LoginItem {
public:
    enum class Status { disabled, enabled, requiresApproval };

    virtual ~LoginItem() = default;

    virtual Status status() const = 0;
    // Registers (true) or unregisters (false); the error text when that failed.
    virtual std::optional<QString> set(bool enabled) = 0;
};

} // namespace tessary
