// SPDX-License-Identifier: MIT
// Keeps the system from slowing the program's timers down while none of its windows is seen: readings keep their
// pace, and a shortcut works at once. Lets the machine sleep. As long as it exists; main thread.
#pragma once

#include <memory>

namespace lumenvale {

class BackgroundActivity {
public:
    BackgroundActivity();
    BackgroundActivity(const BackgroundActivity&) = delete;
    BackgroundActivity& operator=(const BackgroundActivity&) = delete;
    ~BackgroundActivity();

private:
    struct Token;
    std::unique_ptr<Token> token;
};

} // namespace lumenvale
