// SPDX-License-Identifier: MIT
#include "base/Uuid.h"

#include <random>

namespace lumenvale {

namespace {

constexpr std::size_t textLength = 36;

bool isHyphenPosition(std::size_t position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

std::optional<std::uint8_t> digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return static_cast<std::uint8_t>(digit - '0');
    if (digit >= 'a' && digit <= 'f')
        return static_cast<std::uint8_t>(digit - 'a' + 10);
    if (digit >= 'A' && digit <= 'F')
        return static_cast<std::uint8_t>(digit - 'A' + 10);
    return std::nullopt;
}

} // namespace

Uuid Uuid::random()
{
    std::random_device source;
    Uuid result;
    for (std::size_t i = 0; i < result.bytes.size(); i += 4) {
        const std::uint32_t word = source();
        for (std::size_t j = 0; j < 4; ++j)
            result.bytes[i + j] = static_cast<std::uint8_t>(word >> (8 * j));
    }
    result.bytes[6] = static_cast<std::uint8_t>((result.bytes[6] & 0x0F) | 0x40);
    result.bytes[8] = static_cast<std::uint8_t>((result.bytes[8] & 0x3F) | 0x80);
    return result;
}

std::optional<Uuid> Uuid::parse(std::string_view text)
{
    if (text.size() != textLength)
        return std::nullopt;
    Uuid result;
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isHyphenPosition(i)) {
            if (text[i] != '-')
                return std::nullopt;
            continue;
        }
        const std::optional<std::uint8_t> digit = digitValue(text[i]);
        if (!digit)
            return std::nullopt;
        std::uint8_t& byte = result.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | *digit);
    }
    return result;
}

std::string Uuid::toString() const
{
    constexpr char hexadecimal[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : bytes) {
        if (isHyphenPosition(text.size()))
            text += '-';
        text += hexadecimal[byte >> 4];
        text += hexadecimal[byte & 0x0F];
    }
    return text;
}

} // namespace lumenvale
