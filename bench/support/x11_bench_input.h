#pragma once

#include <QString>
#include <QtGlobal>

#include <xcb/xcb.h>

#include <initializer_list>

class QProcess;

// What the benchmarks that drive the desktop from outside share.
namespace tessary::BenchInput {

// The key that types `symbol` on the server's current mapping: key codes
// differ between servers (evdev's Left is 113, Xorg's built-in set's 100).
xcb_keycode_t keycodeOf(xcb_connection_t *connection, xcb_keysym_t symbol);
// Presses the keys in order through XTest and releases them in reverse.
void pressChord(xcb_connection_t *connection, std::initializer_list<xcb_keycode_t> chord);
// Starts `binary` in `tessary` with `home` as its home and waits until it
// reports ready, at most 20 s; false when it does not.
bool startTessary(QProcess &tessary, const QString &binary, const QString &home);
// The resident memory of process `pid` in MiB; 0 when it cannot be read.
double residentMiB(qint64 pid);

// Key symbols the benchmarks press.
inline constexpr xcb_keysym_t controlL = 0xffe3, altL = 0xffe9, left = 0xff51, right = 0xff53, down = 0xff54,
                              escape = 0xff1b, space = 0x20, letterV = 0x76;

} // namespace tessary::BenchInput
