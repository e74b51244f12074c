#pragma once

#include "platform/Resources.h"

// One table per kind of resource; joined in VeskResources.cpp.
namespace vesk {

std::span<const MenuTemplate> Menus();
std::span<const AcceleratorTable> Accelerators();
std::span<const ToolBarTemplate> ToolBars();
std::span<const DialogTemplate> Dialogs();
std::span<const StringEntry> Strings();

}  // namespace vesk
