// SPDX-License-Identifier: MIT
#include "std.h"

#include <gtest/gtest.h>
