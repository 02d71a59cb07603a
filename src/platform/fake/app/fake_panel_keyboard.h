#pragma once

#include "core/platform/panel_keyboard.h"

#include <QList>

namespace tessary {

// Records the windows handed the keyboard and given it back.
class FakePanelKeyboard final : public PanelKeyboard {
public:
    void focusPanel(quintptr window) override { focused.append(window); }
    void panelHiding(quintptr window) override { hidden.append(window); }

    QList<quintptr> focused;
    QList<quintptr> hidden;
};

} // namespace tessary
