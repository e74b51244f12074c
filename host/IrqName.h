#pragma once

#include <optional>
#include <string>

namespace vesk {

// Whether a job name is an interrupt's: longer than 3 characters, and it begins with "IRQ" in
// letters of either case.
bool IsIrqName(const std::string& name);

// The number of an interrupt's name: what follows "IRQ", read as hexadecimal digits as far as they
// go, with blanks, a sign and "0x" allowed ahead of them; its low 32 bits count. Nothing if no
// digit is there, as in names like IRQ_DMA.
std::optional<int> IrqNumber(const std::string& name);

}  // namespace vesk
