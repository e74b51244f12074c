#include "resources/Tables.h"

namespace vesk {
namespace {

constexpr int kButtonSize = 19;

constexpr unsigned kCommands[] = {40008, 32774, 0,     2020,  32771, 40143, 40142,
                                  40141, 40184, 40194, 40197, 40424, 40425};
constexpr std::size_t kShortCount = 10;  // up to 40194

constexpr ToolBarTemplate kToolBars[] = {
    {132, kButtonSize, kButtonSize, kCommands},
    {133, kButtonSize, kButtonSize, std::span(kCommands).first<kShortCount>()},
};

}  // namespace

std::span<const ToolBarTemplate> ToolBars() {
    return kToolBars;
}

}  // namespace vesk
