// SPDX-License-Identifier: MIT
// An open file that is closed with its owner. Move only; the thread that holds it uses it.
#pragma once

#include <unistd.h>
#include <utility>

namespace lumenvale {

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int opened) : number(opened) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~FileDescriptor()
    {
        if (number >= 0)
            ::close(number);
    }

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

private:
    int number = -1;
};

} // namespace lumenvale
