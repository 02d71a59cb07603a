#pragma once

#include <QString>

#include <optional>

namespace tessary {

// Why the X display cannot be opened ("there is no X display (DISPLAY is not
// set)."), or none when it can. Opens and closes a connection of its own:
// Qt aborts when it cannot open the display, so ask before creating the
// application object.
std::optional<QString> xDisplayProblem();

} // namespace tessary
