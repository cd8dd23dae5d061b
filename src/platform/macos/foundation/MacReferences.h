// SPDX-License-Identifier: MIT
// Owners of the system's reference-counted objects, so that every reference is given back exactly once. Values;
// any thread.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>
#include <utility>

extern "C" {
// What `@autoreleasepool` is compiled to; declared by no header, but described by Clang's documentation of ARC.
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
}

namespace lumenvale {

/// Owns one reference to a CoreFoundation object, or none.
template <typename T>
class CFReference {
public:
    CFReference() = default;
    /// Takes over the result of a Create or Copy function; null is fine.
    explicit CFReference(T created) : object(created) {}
    CFReference(CFReference&& other) noexcept : object(other.release()) {}
    template <typename Other>
    CFReference(CFReference<Other>&& other) noexcept : object(other.release())
    {
    }
    CFReference& operator=(CFReference&& other) noexcept
    {
        std::swap(object, other.object);
        return *this;
    }
    ~CFReference()
    {
        if (object)
            CFRelease(object);
    }

    T get() const { return object; }
    explicit operator bool() const { return object != nullptr; }
    /// Hands the reference to the caller.
    T release() { return std::exchange(object, nullptr); }

private:
    T object = nullptr;
};

/// Owns one reference to an I/O Kit object, or none.
class IOReference {
public:
    explicit IOReference(io_object_t created = IO_OBJECT_NULL) : object(created) {}
    IOReference(IOReference&& other) noexcept : object(std::exchange(other.object, IO_OBJECT_NULL)) {}
    IOReference& operator=(IOReference&& other) noexcept
    {
        std::swap(object, other.object);
        return *this;
    }
    ~IOReference()
    {
        if (object != IO_OBJECT_NULL)
            IOObjectRelease(object);
    }

    io_object_t get() const { return object; }
    explicit operator bool() const { return object != IO_OBJECT_NULL; }

private:
    io_object_t object;
};

/// Frees what the system's functions autorelease, when it ends. A thread without a run loop has no pool of its own
/// and would keep all of that until the thread ends. Pools end in the opposite order of their beginning.
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
