#pragma once

#include <QString>

namespace plotwell {

// The program's one file dialog. Like a single dialog object, its folder, file
// name and filter persist between uses, whichever command used it last.
class FileDialog {
public:
    virtual ~FileDialog() = default;

    QString initialFolder; // empty: wherever the dialog was last pointed
    QString fileName; // the chosen path after a successful show
    QString filter; // "Text files (*.txt)|*.txt|All Files(*.*)|*.*"
    bool confirmOverwrite = false; // the save dialog asks before replacing a file
    QString defaultSuffix; // added to a name typed without one ("png")

    // False when the user cancels.
    virtual bool showOpen() = 0;
    virtual bool showSave() = 0;
};

} // namespace plotwell
