#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// The data folder and its files: present, private to the user, decodable. Reads only: a damaged file stays as it is.
class DataFilesCheck final : public SelfCheck {
public:
    explicit DataFilesCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary
