// SPDX-License-Identifier: MIT
// Monitor files: no crash; a refusal names the file; what is accepted keeps its promises and survives a change.
#include "platform/simulated/MonitorFile.h"

#include <cstdlib>

using namespace lumenvale;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    auto monitor = parseMonitorFile(text, "x.json");
    if (!monitor) {
        require(monitor.error().rfind("x.json", 0) == 0 && monitor.error().back() == '.');
        return 0;
    }
    require(!monitor->name.empty());
    if (monitor->native)
        require(monitor->native->brightness >= 0.0 && monitor->native->brightness <= 1.0);
    if (monitor->ddc) {
        require(monitor->ddc->maximum > 0 && monitor->ddc->current <= monitor->ddc->maximum);
        monitor->ddc->current = monitor->ddc->maximum;
        require(parseMonitorFile(withDdcCurrent(text, monitor->ddc->maximum), "x.json") == monitor);
    }
    return 0;
}
