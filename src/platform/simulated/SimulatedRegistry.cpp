// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedRegistry.h"

#include "platform/simulated/SimulatedEdid.h"
#include "platform/simulated/SimulatedService.h"

namespace lumenvale {

namespace {

class FramebufferEntry final : public RegistryEntry {
public:
    explicit FramebufferEntry(const SimulatedDisplay& source) : display(source) {}

    std::string name() const override { return "AppleCLCD2"; }
    std::string path() const override { return simulatedLocation(display.fileName); }
    std::shared_ptr<AVService> createAVService() const override { return nullptr; }

    std::optional<PropertyValue> property(const std::string& key) const override
    {
        if (key == "EDID UUID")
            return simulatedEdidUuid(display.monitor);
        if (key == "DisplayAttributes")
            return displayAttributes();
        if (key == "Transport")
            return transport();
        return std::nullopt;
    }

private:
    PropertyDictionary displayAttributes() const
    {
        const MonitorFile& monitor = display.monitor;
        PropertyDictionary product{{"ManufacturerID", simulatedManufacturer(monitor.vendor)},
                                   {"ProductName", monitor.name},
                                   {"SerialNumber", std::int64_t{monitor.serial}}};
        if (!monitor.alphanumericSerial.empty())
            product.emplace_back("AlphanumericSerialNumber", monitor.alphanumericSerial);
        PropertyDictionary attributes{{"ProductAttributes", std::move(product)}};
        if (monitor.nativePixelWidth)
            attributes.emplace_back("NativeFormatHorizontalPixels", *monitor.nativePixelWidth);
        if (monitor.nativePixelHeight)
            attributes.emplace_back("NativeFormatVerticalPixels", *monitor.nativePixelHeight);
        return attributes;
    }

    PropertyDictionary transport() const
    {
        PropertyDictionary names;
        if (!display.monitor.upstream.empty())
            names.emplace_back("Upstream", display.monitor.upstream);
        if (!display.monitor.downstream.empty())
            names.emplace_back("Downstream", display.monitor.downstream);
        return names;
    }

    const SimulatedDisplay& display;
};

class ProxyEntry final : public RegistryEntry {
public:
    ProxyEntry(const SimulatedDisplay& source, const Pause& wait) : display(source), pause(wait) {}

    std::string name() const override { return "DCPAVServiceProxy"; }
    std::string path() const override { return simulatedLocation(display.fileName) + "/i2c"; }

    std::optional<PropertyValue> property(const std::string& key) const override
    {
        if (key != "Location")
            return std::nullopt;
        return display.monitor.ddc ? "External" : "Embedded";
    }

    std::shared_ptr<AVService> createAVService() const override
    {
        return display.monitor.ddc ? std::make_shared<SimulatedService>(display.file, pause) : nullptr;
    }

private:
    const SimulatedDisplay& display;
    const Pause& pause;
};

} // namespace

void SimulatedRegistry::forEachEntry(const std::function<void(const RegistryEntry&)>& visit)
{
    const FolderContents contents = folder.read();
    for (const SimulatedDisplay& display : contents.displays) {
        visit(FramebufferEntry(display));
        visit(ProxyEntry(display, pause));
    }
}

std::string simulatedLocation(const std::string& fileName) { return "IOService:/simulated/" + fileName; }

} // namespace lumenvale
