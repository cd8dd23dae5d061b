// SPDX-License-Identifier: MIT
#include "base/MemoryUserDefaults.h"
#include "platform/Platform.h"

namespace lumenvale {

namespace {

// The parts for real displays are still to be written: until then this system has none.

class NoRegistry final : public ServiceRegistry {
public:
    void forEachEntry(const std::function<void(const RegistryEntry&)>& /*visit*/) override {}
};

class NoDisplaySystem final : public DisplaySystem {
public:
    std::optional<PropertyDictionary> informationDictionary(std::uint32_t /*id*/) override { return std::nullopt; }
    bool isOnline(std::uint32_t /*id*/) override { return false; }
    std::optional<std::string> uuid(std::uint32_t /*id*/) override { return std::nullopt; }
};

class NoScreens final : public ScreenSource {
public:
    std::vector<Screen> screens() override { return {}; }
    bool isAsleep(std::uint32_t /*id*/) override { return false; }
};

class NoEvents final : public SystemEvents {
public:
    Subscription subscribe(std::function<void(SystemEvent)> observer) override
    {
        return events.subscribe(std::move(observer));
    }

private:
    Signal<SystemEvent> events;
};

class NoDiagnostics final : public Diagnostics {
public:
    std::vector<Finding> examine(const std::vector<DisplayInfo>& /*displays*/) override
    {
        return {{Finding::Kind::problem, "", "Real displays are not supported yet.",
                 "Use simulated ones: lumenvale --simulate list"}};
    }
};

} // namespace

Platform makeNativePlatform(const PlatformOptions& options, Clock& /*clock*/, MainThread& /*mainThread*/)
{
    Platform platform;
    platform.defaults = std::make_unique<MemoryUserDefaults>();
    platform.screens = std::make_unique<NoScreens>();
    platform.events = std::make_unique<NoEvents>();
    platform.diagnostics = std::make_unique<NoDiagnostics>();
    platform.startup = makeNativeStartupService(options);
    platform.hotKeys = makeNativeHotKeyService(options);
    platform.hardware.registry = std::make_unique<NoRegistry>();
    platform.hardware.displaySystem = std::make_unique<NoDisplaySystem>();
    return platform;
}

} // namespace lumenvale
