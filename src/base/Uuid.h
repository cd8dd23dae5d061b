// SPDX-License-Identifier: MIT
// A 128-bit identity (RFC 9562).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumenvale {

struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    bool operator==(const Uuid& other) const = default;
    /// For the keys of maps. Arrays have no three-way comparison in the libraries of older Macs.
    bool operator<(const Uuid& other) const { return bytes < other.bytes; }

    /// A fresh version 4 value. Any thread.
    static Uuid random();

    /// Reads 8-4-4-4-12 hexadecimal digits of either case; none for anything else.
    static std::optional<Uuid> parse(std::string_view text);

    /// Upper-case 8-4-4-4-12.
    std::string toString() const;
};

} // namespace lumenvale
