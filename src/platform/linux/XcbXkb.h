// SPDX-License-Identifier: MIT
// xcb's keyboard extension, whose C header names a field with a C++ keyword.
#pragma once

#define explicit explicitField // NOLINT
#include <xcb/xkb.h>
#undef explicit
