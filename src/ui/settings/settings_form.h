#pragma once

#include <QString>

class QGroupBox;
class QIcon;
class QLabel;
class QToolButton;
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
// The status symbols ("checkmark.circle.fill", "exclamationmark.triangle…"):
// the theme's icon, else the style's own, which always exists.
QIcon statusIcon(const QString &symbol, const QWidget *widget);
// A borderless button that removes a row.
QToolButton *removeButton(QWidget *parent);
// Text colours for states.
QString warningStyle();
QString errorStyle();

} // namespace tessary::SettingsForm
