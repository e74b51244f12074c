#pragma once

#include <functional>

class CMenu;
class QMenu;

namespace vesk {

// What a menu of commands asks and tells.
struct CommandMenuUser {
    std::function<void(CMenu&)> m_Update;  // brings the items of one pop-up up to date
    std::function<void(unsigned)> m_Chosen;
};

// Fills a menu from a command menu, sub-menus included. Each of them is brought up to date
// whenever it opens. Borrows the command menu.
void FillCommandMenu(QMenu& target, CMenu& menu, const CommandMenuUser& user);

}  // namespace vesk
