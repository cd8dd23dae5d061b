// SPDX-License-Identifier: MIT
// A fresh machine for each test, which must end with every reference given back and nothing misused.
#pragma once

#include <fakesdk/fakesdk.h>
#include <gtest/gtest.h>

namespace lumenvale {

/// How many autorelease pools are open.
int openPools();

struct MacTest : testing::Test {
    MacTest() { fakesdk::reset(); }
    ~MacTest() override
    {
        EXPECT_EQ(fakesdk::leaks(), std::vector<std::string>());
        EXPECT_EQ(fakesdk::faults(), std::vector<std::string>());
        EXPECT_EQ(openPools(), 0);
    }

    fakesdk::Machine& machine = fakesdk::machine();
};

} // namespace lumenvale
