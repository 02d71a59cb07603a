#include "platform/x11/app/evdev_key_positions.h"

#include <QHash>

namespace tessary {

int EvdevKeyPositions::keyCode(quint32 nativeKey) const
{
    // X keycode → portable code (ANSI position).
    // clang-format off
    static const QHash<quint32, int> codes = {
        {9, 53}, {22, 51}, {23, 48}, {36, 36}, {65, 49}, {119, 117},
        // 1 … 0, - =
        {10, 18}, {11, 19}, {12, 20}, {13, 21}, {14, 23}, {15, 22}, {16, 26}, {17, 28}, {18, 25}, {19, 29},
        {20, 27}, {21, 24},
        // q w e r t y u i o p [ ]
        {24, 12}, {25, 13}, {26, 14}, {27, 15}, {28, 17}, {29, 16}, {30, 32}, {31, 34}, {32, 31}, {33, 35},
        {34, 33}, {35, 30},
        // a s d f g h j k l ; ' `
        {38, 0}, {39, 1}, {40, 2}, {41, 3}, {42, 5}, {43, 4}, {44, 38}, {45, 40}, {46, 37}, {47, 41},
        {48, 39}, {49, 50},
        // \ z x c v b n m , . /
        {51, 42}, {52, 6}, {53, 7}, {54, 8}, {55, 9}, {56, 11}, {57, 45}, {58, 46}, {59, 43}, {60, 47},
        {61, 44},
        // F1 … F12
        {67, 122}, {68, 120}, {69, 99}, {70, 118}, {71, 96}, {72, 97}, {73, 98}, {74, 100}, {75, 101},
        {76, 109}, {95, 103}, {96, 111},
        // Home, Up, Page Up, Left, Right, End, Down, Page Down
        {110, 115}, {111, 126}, {112, 116}, {113, 123}, {114, 124}, {115, 119}, {116, 125}, {117, 121},
    };
    // clang-format on
    return codes.value(nativeKey, -1);
}

} // namespace tessary
