// SPDX-License-Identifier: MIT
// What a monitor says of itself: the 128-byte base block of its EDID (VESA E-EDID 1.4, section 3). Values; any
// thread. The bytes come from a monitor and are never trusted.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace lumenvale {

using EdidBlock = std::array<std::uint8_t, 128>;

struct Resolution {
    int width = 0; ///< pixels
    int height = 0;

    bool operator==(const Resolution& other) const = default;
};

struct Edid {
    EdidBlock block{};
    std::string manufacturer;    ///< three capital letters (bytes 8, 9); empty when they are no letters
    std::uint16_t vendor = 0;    ///< bytes 8, 9, big-endian
    std::uint16_t product = 0;   ///< bytes 10, 11, little-endian
    std::uint32_t serial = 0;    ///< bytes 12 to 15, little-endian; 0: none
    std::uint8_t week = 0;       ///< of manufacture; 0: not given, 255: the year is the model's
    int year = 1990;             ///< of manufacture
    std::uint8_t version = 0;    ///< 1
    std::uint8_t revision = 0;   ///< 3 or 4
    std::uint8_t videoInput = 0; ///< byte 20
    int widthCm = 0;             ///< of the picture; 0: not given
    int heightCm = 0;
    std::string productName; ///< printable ASCII; may be empty
    std::string serialText;
    std::optional<Resolution> preferred; ///< of the first detailed timing

    bool operator==(const Edid& other) const = default;
};

/// Reads a base block. None when there are fewer than 128 bytes, or the header or the checksum is wrong; what
/// follows the block is ignored.
std::optional<Edid> parseEdid(std::span<const std::uint8_t> bytes);

/// True when the block says which specimen of its kind the monitor is. Placeholders do not count.
bool hasSerial(const Edid& edid);

} // namespace lumenvale
