// Tests of the shared concrete constants against their closed forms, worked by hand below.
// Stresses in kg/cm².
#include "core/concrete.h"

#include <gtest/gtest.h>

namespace orvak::core {
namespace {

TEST(ConcreteConstants, Beta1StepsDownFrom280AndStopsAt065) {
    struct Case {
        double fc;
        double beta1; // 0.85 - 0.05 (Fc - 280) / 70, between 0.65 and 0.85
    };
    for (const Case c : {Case{210, 0.85}, Case{280, 0.85}, Case{350, 0.80}, Case{420, 0.75},
                         Case{315, 0.825}, Case{560, 0.65}, Case{700, 0.65}}) {
        EXPECT_NEAR(beta1(c.fc), c.beta1, 1e-12) << "Fc = " << c.fc;
    }
}

TEST(ConcreteConstants, BalancedTerm) {
    // 6100 / (6100 + 4200) = 6100 / 10300 = 0.59223301; 6100 / (6100 + 2800) = 0.68539326.
    EXPECT_NEAR(balancedTerm(4200), 0.59223301, 1e-8);
    EXPECT_NEAR(balancedTerm(2800), 0.68539326, 1e-8);
}

TEST(ConcreteConstants, ModulusIs15100RootFc) {
    // 15100 × √400 = 15100 × 20 = 302000; 15100 × √225 = 15100 × 15 = 226500;
    // 15100 × √250 = 15100 × 15.8113883 = 238751.96.
    EXPECT_NEAR(concreteModulus(400), 302000.0, 1e-6);
    EXPECT_NEAR(concreteModulus(225), 226500.0, 1e-6);
    EXPECT_NEAR(concreteModulus(250), 238751.96, 0.01);
}

TEST(ConcreteConstants, RoundUpToStep) {
    struct Case {
        double v, step, expected;
    };
    for (const Case c : {
             Case{100, 5, 100},      // already a multiple: stays
             Case{101, 5, 105},      //
             Case{0.4, 5, 5},        //
             Case{0, 5, 0},          //
             Case{104.99, 5, 105},   //
             Case{100.0004, 5, 100}, // (100.0004 + 4.9995) / 5 = 20.99998: less than 1/10000 of
                                     // a step above a multiple does not go up
             Case{100.0006, 5, 105}, // (100.0006 + 4.9995) / 5 = 21.00002
             Case{23.2, 2.5, 25},    //
         }) {
        EXPECT_NEAR(roundUpToStep(c.v, c.step), c.expected, 1e-9) << c.v << " step " << c.step;
    }
}

} // namespace
} // namespace orvak::core
