#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace jet {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;
using ByteSpan = std::span<std::uint8_t>;

// Integers in the file are little endian unless a name says otherwise. None of these functions
// checks its offset: a decoder checks the size of a structure first.

inline std::uint16_t u16At(ByteView bytes, std::size_t at) {
  const auto part = bytes.subspan(at).first<2>();
  return static_cast<std::uint16_t>(part[0] | part[1] << 8);
}
inline std::uint32_t u32At(ByteView bytes, std::size_t at) {
  const auto part = bytes.subspan(at).first<4>();
  return static_cast<std::uint32_t>(part[0] | part[1] << 8 | part[2] << 16) |
         static_cast<std::uint32_t>(part[3]) << 24;
}
inline std::uint64_t u64At(ByteView bytes, std::size_t at) {
  return u32At(bytes, at) | static_cast<std::uint64_t>(u32At(bytes, at + 4)) << 32;
}
inline std::uint32_t bigEndian24At(ByteView bytes, std::size_t at) {
  return static_cast<std::uint32_t>(bytes[at] << 16 | bytes[at + 1] << 8 | bytes[at + 2]);
}

inline void putU16(ByteSpan bytes, std::size_t at, std::size_t value) {
  bytes[at] = static_cast<std::uint8_t>(value);
  bytes[at + 1] = static_cast<std::uint8_t>(value >> 8);
}
inline void putU32(ByteSpan bytes, std::size_t at, std::uint32_t value) {
  putU16(bytes, at, value & 0xFFFF);
  putU16(bytes, at + 2, value >> 16);
}
inline void putU64(ByteSpan bytes, std::size_t at, std::uint64_t value) {
  putU32(bytes, at, static_cast<std::uint32_t>(value));
  putU32(bytes, at + 4, static_cast<std::uint32_t>(value >> 32));
}

inline void appendU16(Bytes& bytes, std::size_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}
inline void appendBytes(Bytes& bytes, ByteView more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

/// Puts `part` at `at`; both lie inside `bytes`.
inline void putBytes(ByteSpan bytes, std::size_t at, ByteView part) {
  if (!part.empty()) std::memmove(bytes.data() + at, part.data(), part.size());
}

}  // namespace jet
