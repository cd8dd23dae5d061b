// SPDX-License-Identifier: MIT
// A fresh machine for each test, which must end with every reference given back and nothing misused.
#pragma once

#include "standins/Machine.h"

#include <gtest/gtest.h>

namespace lumenvale {

struct MacTest : testing::Test {
    void TearDown() override
    {
        EXPECT_EQ(standin::leaks(), std::vector<std::string>());
        EXPECT_EQ(standin::faults(), std::vector<std::string>());
    }

    standin::Machine& machine = standin::reset();
};

} // namespace lumenvale
