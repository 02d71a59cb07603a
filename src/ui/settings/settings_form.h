#pragma once

#include <QString>

class QGroupBox;
class QLabel;
class QVBoxLayout;
class QWidget;

namespace tessary::SettingsForm {

// The pieces every tab is built from, so the tabs look alike.

// A titled section (untitled when `title` is empty) with a vertical layout.
QGroupBox *section(const QString &title, QWidget *parent);
QVBoxLayout *sectionLayout(QGroupBox *section);
// A word-wrapped note in the smaller, secondary style.
QLabel *note(const QString &text, QWidget *parent);
// A tab page whose content scrolls when it outgrows the tab; returns the
// content's layout.
QVBoxLayout *scrollingPage(QWidget *page);
// Text colours for states.
QString warningStyle();
QString errorStyle();

} // namespace tessary::SettingsForm
