// SPDX-License-Identifier: MIT
// The description of one simulated monitor: a JSON object, read strictly. All keys but "name" are optional;
// unknown keys, values of the wrong type and values out of range are errors that name file and key. Pure; any
// thread.
//
//     { "name": "Studio 27", "displayID": 2, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230",
//       "isBuiltIn": false, "isMain": false, "vendor": 4268, "model": 16589, "serial": 305419896,
//       "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 1920, "logicalHeight": 1080, "refreshRate": 60,
//       "nativePixelWidth": 3840, "nativePixelHeight": 2160, "alphanumericSerial": "QX7200143",
//       "upstream": "DP", "downstream": "HDMI", "online": true,
//       "native": { "brightness": 0.625, "maximum": null, "readFails": false, "writeFails": false,
//                   "overridesTo": null },
//       "ddc": { "maximum": 100, "current": 42, "silent": false, "ignoresWrites": false, "overridesTo": null,
//                "failNextTransfers": 0, "corruptEvery": 0, "delayMs": 0 } }
//
// Without "native" and "ddc" the display cannot be controlled.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

/// The system's own brightness functions, as this display answers them.
struct NativeControl {
    double brightness = 0.5; ///< the panel shows the nearest of its levels
    bool readFails = false;
    bool writeFails = false;
    std::optional<double> overridesTo;    ///< what every write ends in
    std::optional<std::uint32_t> maximum; ///< the levels are 0 to this one, at least 1; none: it takes every value

    bool operator==(const NativeControl& other) const = default;
};

/// The monitor behind the I2C channel.
struct DdcControl {
    std::uint16_t maximum = 100;              ///< at least 1
    std::uint16_t current = 50;               ///< at most `maximum`
    bool silent = false;                      ///< acknowledges nothing, as with DDC/CI switched off in its menu
    bool ignoresWrites = false;               ///< acknowledges a new value and keeps the old one
    std::optional<std::uint16_t> overridesTo; ///< what every write ends in; at most `maximum`
    std::uint32_t failNextTransfers = 0;      ///< how many transfers still fail; counted down in the file
    std::uint32_t corruptEvery = 0;           ///< each so many replies have one bit wrong; 0: none
    std::uint32_t delayMs = 0;                ///< how long each transfer takes; at most 10,000

    bool operator==(const DdcControl& other) const = default;
};

struct MonitorFile {
    std::string name;
    std::optional<std::uint32_t> displayID; ///< none: made from the file's name
    std::optional<std::string> uuid;        ///< canonical form; none: the system gives no UUID
    bool isBuiltIn = false;
    bool isMain = false;
    std::uint32_t vendor = 0; ///< at most 65,535, as in an EDID; so is `model`
    std::uint32_t model = 0;
    std::uint32_t serial = 0;
    std::int64_t pixelWidth = 1920; ///< 0 here or in `pixelHeight`: no current mode
    std::int64_t pixelHeight = 1080;
    double logicalWidth = 1920; ///< left out: as many points as pixels
    double logicalHeight = 1080;
    double refreshRate = 60;
    std::optional<std::int64_t> nativePixelWidth;
    std::optional<std::int64_t> nativePixelHeight;
    std::string alphanumericSerial;
    std::string upstream;
    std::string downstream;
    bool online = true; ///< false: still among the screens, but no longer attached
    std::optional<NativeControl> native;
    std::optional<DdcControl> ddc;

    bool operator==(const MonitorFile& other) const = default;
};

/// Reads the text of the file called `fileName`. The error is a whole sentence for the user.
tl::expected<MonitorFile, std::string> parseMonitorFile(const std::string& text, const std::string& fileName);

// The text of a valid monitor file with one value changed and all else, the order of the keys included, as it was.
std::string withNativeBrightness(const std::string& text, double brightness);
std::string withDdcCurrent(const std::string& text, std::uint16_t current);
std::string withFailNextTransfers(const std::string& text, std::uint32_t count);

} // namespace lumenvale
