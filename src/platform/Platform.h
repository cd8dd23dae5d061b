// SPDX-License-Identifier: MIT
// Everything about displays that differs between systems, made in one place, and what keeps their preferences. It
// needs no window system; what does is in Shell.h. Only the factories name the types behind these interfaces; the
// build picks the native folder.
#pragma once

#include "base/Clock.h"
#include "base/MainThread.h"
#include "base/UserDefaults.h"
#include "base/Words.h"
#include "displays/Diagnostics.h"
#include "displays/RunningProgram.h"
#include "displays/ScreenSource.h"
#include "displays/SystemEvents.h"
#include "hardware/DisplayHardware.h"
#include "platform/WindowSystem.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

/// Receives one line of the log, without its end. Any thread.
using LogSink = std::function<void(const std::string&)>;

struct PlatformOptions {
    std::optional<std::string> simulationFolder; ///< monitors are the files in it; none: the real displays
    WindowSystem* windowSystem =
        nullptr;             ///< knows the screens, too, and outlives the platform; null: there is none
    bool wantsModes = false; ///< the screens' modes are wanted though there is no window system; takes longer
    LogSink log;             ///< empty: nothing is logged
    LogSink report; ///< main thread: what the user must be told, in whole sentences; empty: nobody is told
};

/// Declared in the order of construction: what stands first outlives what follows.
struct Platform {
    std::unique_ptr<UserDefaults> defaults;
    std::unique_ptr<ScreenSource> screens;
    std::unique_ptr<SystemEvents> events;
    std::unique_ptr<Diagnostics> diagnostics;
    std::unique_ptr<RunningProgram> program; ///< null where the system has no way to hear of it
    HardwareAccess hardware;
    Words words;
};

/// Makes the platform: simulated where the options name a folder, else the native one. Main thread, after the
/// application object. The error is a whole sentence for the user.
tl::expected<Platform, std::string> makePlatform(const PlatformOptions& options, Clock& clock,
                                                 MainThread& mainThread);

// Each is defined once per system.

/// The desktop program that controls the same displays, real or simulated.
std::unique_ptr<RunningProgram> makeNativeRunningProgram(const PlatformOptions& options);
/// The native part of `makePlatform`, for real displays.
Platform makeNativePlatform(const PlatformOptions& options, Clock& clock, MainThread& mainThread);
/// What the system calls the things that users see the program in. With simulated displays, too.
Words nativeWords();

} // namespace lumenvale
