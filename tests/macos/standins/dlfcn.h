// SPDX-License-Identifier: MIT
// Sends what the project loads from the macOS system folders to the stand-ins, and all else to the real functions.
#pragma once
#pragma GCC system_header // for include_next

#include_next <dlfcn.h>

void* standInOpen(const char* path, int mode);
void* standInSymbol(void* library, const char* name);
int standInClose(void* library);

#define dlopen standInOpen
#define dlsym standInSymbol
#define dlclose standInClose
