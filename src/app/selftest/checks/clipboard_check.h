#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

#include <QTemporaryDir>

#include <memory>

class QMimeData;

namespace tessary {

class ClipboardStore;
class X11Pasteboard;

// A real round trip through the X clipboard: an own copy must be announced,
// read back and left out of a history kept in a scratch folder. The copy is
// marked as concealed so that history keepers (a running Tessary included)
// skip it, and what the clipboard held before is put back the same way —
// only where a clipboard manager keeps it once this process has ended.
class ClipboardCheck final : public SelfCheck {
public:
    explicit ClipboardCheck(const SelfCheckContext &context);
    ~ClipboardCheck() override;
    void run(Done done) override;

    static constexpr int noticeTimeoutMs = 2000;

private:
    void finish();
    // Ends the check once the copy was read back (or not).
    void conclude(bool readBack);
    void restore();

    const SelfCheckContext &m_context;
    Done m_done;
    QTemporaryDir m_scratch;
    std::unique_ptr<X11Pasteboard> m_pasteboard;
    std::unique_ptr<ClipboardStore> m_store;
    std::unique_ptr<QMimeData> m_previous;
    QString m_marker;
    bool m_noticed = false;
    bool m_finishing = false;
};

} // namespace tessary
