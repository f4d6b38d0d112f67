// Tests of the settings fallback: a stored value stands only when it is above zero; every
// other value, a garbled one included, gives the code's value.
#include "core/settings_fields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvak::core {
namespace {

TEST(SettingsFallback, AStoredValueStandsOnlyAboveZero) {
    // φ for flexure as an example: 0.9 is the code's value.
    EXPECT_EQ(orDefault(0.0, 0.9), 0.9);
    EXPECT_EQ(orDefault(-0.0, 0.9), 0.9);
    EXPECT_EQ(orDefault(-0.7, 0.9), 0.9);
    EXPECT_EQ(orDefault(std::nan(""), 0.9), 0.9); // a garbled record must not reach a design
    EXPECT_EQ(orDefault(0.75, 0.9), 0.75);
    const double tiny = std::numeric_limits<float>::denorm_min();
    EXPECT_EQ(orDefault(tiny, 0.9), tiny); // any value above zero is the user's
}

} // namespace
} // namespace orvak::core
