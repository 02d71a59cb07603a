#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// Every layout's target frame on each real monitor's usable area, against
// frames worked out here from the layout's share of the area.
class LayoutsCheck final : public SelfCheck {
public:
    explicit LayoutsCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary
