// Byte order of 16-, 32- and 64-bit numbers. The host is little-endian.
#pragma once

#include <bit>
#include <cstdint>

static_assert(std::endian::native == std::endian::little, "the functions below swap for a little-endian host");

///@{
/// The number with its bytes in the other order. The two directions are the same; the name tells which is meant.
constexpr std::uint16_t AKSwapNumber16_EndianHostFromBig(std::uint16_t value) { return __builtin_bswap16(value); }
constexpr std::uint16_t AKSwapNumber16_EndianBigFromHost(std::uint16_t value) { return __builtin_bswap16(value); }
constexpr std::uint32_t AKSwapNumber32_EndianHostFromBig(std::uint32_t value) { return __builtin_bswap32(value); }
constexpr std::uint32_t AKSwapNumber32_EndianBigFromHost(std::uint32_t value) { return __builtin_bswap32(value); }
constexpr std::uint64_t AKSwapNumber64_EndianHostFromBig(std::uint64_t value) { return __builtin_bswap64(value); }
constexpr std::uint64_t AKSwapNumber64_EndianBigFromHost(std::uint64_t value) { return __builtin_bswap64(value); }
///@}

///@{
/// The number as it is: here the host's order is little-endian.
constexpr std::uint16_t AKSwapNumber16_EndianHostFromLittle(std::uint16_t value) { return value; }
constexpr std::uint16_t AKSwapNumber16_EndianLittleFromHost(std::uint16_t value) { return value; }
constexpr std::uint32_t AKSwapNumber32_EndianHostFromLittle(std::uint32_t value) { return value; }
constexpr std::uint32_t AKSwapNumber32_EndianLittleFromHost(std::uint32_t value) { return value; }
constexpr std::uint64_t AKSwapNumber64_EndianHostFromLittle(std::uint64_t value) { return value; }
constexpr std::uint64_t AKSwapNumber64_EndianLittleFromHost(std::uint64_t value) { return value; }
///@}
