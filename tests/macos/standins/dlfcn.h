// SPDX-License-Identifier: MIT
// Sends what the project loads at run time to the stand-ins.
#pragma once
#pragma GCC system_header // for include_next

#include_next <dlfcn.h>

void* standInOpen(const char* path, int mode);
void* standInSymbol(void* library, const char* name);
int standInClose(void* library);

#define dlopen standInOpen
#define dlsym standInSymbol
#define dlclose standInClose
