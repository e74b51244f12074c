#include <gtest/gtest.h>

#include "platform/Text.h"

TEST(GroupedNumber, HasACommaBetweenGroupsOfThreeDigits) {
    const struct {
        std::uint64_t number;
        const char* text;
    } cases[] = {{0, "0"},
                 {999, "999"},
                 {1000, "1,000"},
                 {123456, "123,456"},
                 {18446744073709551615U, "18,446,744,073,709,551,615"}};
    for (const auto& c : cases) EXPECT_EQ(vesk::GroupedNumber(c.number), c.text);
}
