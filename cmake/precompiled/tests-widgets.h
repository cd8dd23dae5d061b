// SPDX-License-Identifier: MIT
#include "qt-widgets.h"

#include <gtest/gtest.h>
