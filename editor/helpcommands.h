#pragma once

#include <QString>

namespace plotwell {

class Dialogs;
class Launcher;

// Help > About: the program, its makers, its home page and its version, in
// one message box. The build may name no home page; that line then tells
// where the readme is.
QString aboutText(const QString& homePage);
void showAbout(Dialogs& dialogs);

// Help > Readme: readme.txt from the program's folder (or, where the program
// is installed, its documentation folder) in the desktop's text viewer. A
// missing file or viewer is told in a message box.
void showReadme(Launcher& launcher, Dialogs& dialogs);

} // namespace plotwell
