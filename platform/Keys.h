#pragma once

#include "platform/Resources.h"

// Keys as input handlers and accelerators name them. Letters and digits are their capital
// characters.
constexpr unsigned VK_BACK = 0x08;
constexpr unsigned VK_TAB = 0x09;
constexpr unsigned VK_RETURN = 0x0D;
constexpr unsigned VK_ESCAPE = 0x1B;
constexpr unsigned VK_SPACE = 0x20;
constexpr unsigned VK_PRIOR = 0x21;
constexpr unsigned VK_NEXT = 0x22;
constexpr unsigned VK_END = 0x23;
constexpr unsigned VK_HOME = 0x24;
constexpr unsigned VK_LEFT = 0x25;
constexpr unsigned VK_UP = 0x26;
constexpr unsigned VK_RIGHT = 0x27;
constexpr unsigned VK_DOWN = 0x28;
constexpr unsigned VK_INSERT = 0x2D;
constexpr unsigned VK_DELETE = 0x2E;
constexpr unsigned VK_MULTIPLY = 0x6A;
constexpr unsigned VK_ADD = 0x6B;
constexpr unsigned VK_SUBTRACT = 0x6D;
constexpr unsigned VK_F1 = 0x70;
constexpr unsigned VK_F2 = 0x71;
constexpr unsigned VK_F3 = 0x72;
constexpr unsigned VK_F4 = 0x73;
constexpr unsigned VK_F6 = 0x75;

namespace vesk {

// The command that a key with these modifiers held means, or 0.
unsigned FindCommand(const AcceleratorTable&, unsigned key, unsigned modifiers);

}  // namespace vesk
