#include "platform/x11/windows/xkb_key_names.h"

namespace tessary::XkbKeyNames {

const std::vector<std::pair<quint32, QByteArray>> &positions()
{
    // clang-format off
    static const std::vector<std::pair<quint32, QByteArray>> table = {
        // letter rows, left to right
        {12, "AD01"}, {13, "AD02"}, {14, "AD03"}, {15, "AD04"}, {17, "AD05"}, {16, "AD06"}, {32, "AD07"},
        {34, "AD08"}, {31, "AD09"}, {35, "AD10"}, {33, "AD11"}, {30, "AD12"},
        {0, "AC01"}, {1, "AC02"}, {2, "AC03"}, {3, "AC04"}, {5, "AC05"}, {4, "AC06"}, {38, "AC07"},
        {40, "AC08"}, {37, "AC09"}, {41, "AC10"}, {39, "AC11"},
        {6, "AB01"}, {7, "AB02"}, {8, "AB03"}, {9, "AB04"}, {11, "AB05"}, {45, "AB06"}, {46, "AB07"},
        {43, "AB08"}, {47, "AB09"}, {44, "AB10"},
        // digit row
        {50, "TLDE"}, {18, "AE01"}, {19, "AE02"}, {20, "AE03"}, {21, "AE04"}, {23, "AE05"}, {22, "AE06"},
        {26, "AE07"}, {28, "AE08"}, {25, "AE09"}, {29, "AE10"}, {27, "AE11"}, {24, "AE12"},
        {42, "BKSL"},
        // Return, BackSpace, space, Tab, Escape, Delete
        {36, "RTRN"}, {51, "BKSP"}, {49, "SPCE"}, {48, "TAB"}, {53, "ESC"}, {117, "DELE"},
        // Home, End, Page Up, Page Down, arrows
        {115, "HOME"}, {119, "END"}, {116, "PGUP"}, {121, "PGDN"},
        {123, "LEFT"}, {124, "RGHT"}, {126, "UP"}, {125, "DOWN"},
        // F1 … F12
        {122, "FK01"}, {120, "FK02"}, {99, "FK03"}, {118, "FK04"}, {96, "FK05"}, {97, "FK06"}, {98, "FK07"},
        {100, "FK08"}, {101, "FK09"}, {109, "FK10"}, {103, "FK11"}, {111, "FK12"},
    };
    // clang-format on
    return table;
}

} // namespace tessary::XkbKeyNames
