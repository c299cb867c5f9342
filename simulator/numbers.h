// Unsigned numbers of 1, 2 or 4 bytes in a record, in the machine's byte order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace norvane::simulator {

inline void store_number(char* at, std::size_t width, std::uint32_t value)
{
    const auto octet = static_cast<std::uint8_t>(value);
    const auto half = static_cast<std::uint16_t>(value);
    if (width == sizeof octet) {
        std::memcpy(at, &octet, sizeof octet);
    } else if (width == sizeof half) {
        std::memcpy(at, &half, sizeof half);
    } else {
        std::memcpy(at, &value, sizeof value);
    }
}

inline std::uint32_t load_number(const char* at, std::size_t width)
{
    std::uint8_t octet = 0;
    std::uint16_t half = 0;
    std::uint32_t word = 0;
    if (width == sizeof octet) {
        std::memcpy(&octet, at, sizeof octet);
    } else if (width == sizeof half) {
        std::memcpy(&half, at, sizeof half);
    } else {
        std::memcpy(&word, at, sizeof word);
    }
    return octet + half + word;
}

}  // namespace norvane::simulator
