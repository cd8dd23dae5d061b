// SPDX-License-Identifier: MIT
// The stand-ins themselves: a leak or a misuse that they missed would be missed by every other test.
#include "platform/macos/foundation/AutoreleasePool.h"
#include "standins/Machine.h"

#include <Carbon/Carbon.h>
#include <IOKit/IOKitLib.h>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(StandInTest, WhatIsNotGivenBackIsALeak)
{
    standin::reset();
    const CFTypeRef list = standin::makeObject(PropertyArray{"kept"});
    EXPECT_EQ(standin::leaks().size(), 2U);
    CFRetain(list);
    CFRelease(list);
    EXPECT_EQ(standin::leaks().size(), 2U);
    CFRelease(list);
    EXPECT_TRUE(standin::leaks().empty());

    const io_registry_entry_t root = IORegistryGetRootEntry(kIOMainPortDefault);
    EXPECT_EQ(standin::leaks().size(), 1U);
    IOObjectRelease(root);
    EXPECT_TRUE(standin::leaks().empty());
    void* const pool = objc_autoreleasePoolPush();
    EXPECT_EQ(standin::leaks(), std::vector<std::string>{"autorelease pool"});
    objc_autoreleasePoolPop(pool);
    EXPECT_TRUE(standin::leaks().empty());
    EXPECT_TRUE(standin::faults().empty());
}

TEST(StandInTest, WhatIsGivenBackTwiceOrMistakenIsAFault)
{
    standin::reset();
    const CFTypeRef text = standin::makeObject("text");
    CFArrayGetCount(static_cast<CFArrayRef>(text));
    EXPECT_EQ(standin::faults().size(), 1U);
    CFRelease(text);
    CFRelease(text);
    EXPECT_EQ(standin::faults().size(), 2U);
    CFRelease(nullptr);
    EXPECT_EQ(standin::faults().size(), 3U);
    const io_registry_entry_t root = IORegistryGetRootEntry(kIOMainPortDefault);
    IOIteratorNext(root);
    EXPECT_EQ(standin::faults().size(), 4U);
    IOObjectRelease(root);
    IOObjectRelease(root);
    EXPECT_EQ(standin::faults().size(), 5U);
    UnregisterEventHotKey(nullptr);
    EXPECT_EQ(standin::faults().size(), 6U);
    EXPECT_TRUE(standin::leaks().empty());
}

} // namespace
} // namespace lumenvale
