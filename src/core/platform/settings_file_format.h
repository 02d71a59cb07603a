#pragma once

#include <QIODevice>
#include <QSettings>

namespace tessary {

// The settings file's INI dialect, read without ever decoding "@Variant(...)"
// values: Qt's own INI reader hands those to QDataStream, which a corrupt or
// hostile file can make allocate without bound. Values come back as strings,
// or as bytes for "@ByteArray(...)"; a line that does not parse, and every
// "@Variant", is left out. Files from Qt's INI format read the same for
// those two kinds of value.
namespace SettingsFileFormat {

// Registered with QSettings once; files keep the ".conf" extension.
QSettings::Format format();

bool read(QIODevice &device, QSettings::SettingsMap &map);
// Writes strings, bytes, booleans and numbers; a value of any other type is left out.
bool write(QIODevice &device, const QSettings::SettingsMap &map);

} // namespace SettingsFileFormat

} // namespace tessary
