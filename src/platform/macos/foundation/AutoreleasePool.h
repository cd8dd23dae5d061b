// SPDX-License-Identifier: MIT
// Frees what the system's functions autorelease, when it ends. A thread without a run loop has no pool of its own
// and would keep all of that until it ends. Any thread; pools end in the opposite order of their beginning.
#pragma once

extern "C" {
// What `@autoreleasepool` is compiled to; of the Objective-C runtime, stated by Clang's description of it.
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
}

namespace lumenvale {

class AutoreleasePool {
public:
    AutoreleasePool() : pool(objc_autoreleasePoolPush()) {}
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;
    ~AutoreleasePool() { objc_autoreleasePoolPop(pool); }

private:
    void* pool;
};

} // namespace lumenvale
