#pragma once

#include <QString>

namespace vesk {

struct UserState;

// The viewer's memory as a file in JSON. What is in it is only ever a convenience: a file that
// cannot be used is left out, never an error that stops anything.
class StateFile {
public:
    explicit StateFile(QString path) : m_Path(std::move(path)) {}

    // veskview.json in the folder for programs' state, $XDG_STATE_HOME or ~/.local/state, there in
    // a folder of its own.
    static QString DefaultPath();

    // Fills a state. The text is empty, or says why there was nothing to take over; a file that
    // is not there is no reason.
    QString Load(UserState&);

    // Writes beside the file and renames; the text says what went wrong. A file that could not be
    // loaded is kept under another name.
    QString Save(const UserState&);

private:
    QString m_Path;
    bool m_IsForeign = false;
};

}  // namespace vesk
