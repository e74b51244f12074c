#pragma once

#include <QByteArray>

namespace vesk {

struct UserState;

// The viewer's memory as text. A path that is no valid text is left out.
QByteArray StateToJson(const UserState&);

// False, and an untouched state, if the text is not such a memory. Single entries that make no
// sense are left out, and no more of them are taken than the viewer itself would have written.
bool StateFromJson(const QByteArray&, UserState&);

}  // namespace vesk
