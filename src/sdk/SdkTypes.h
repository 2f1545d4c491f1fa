// The host's basic types, with exact widths on every system, so that a native build has the same records as Windows.
#pragma once

#include <cstddef>
#include <cstdint>

using csSDK_int8 = std::int8_t;
using csSDK_int16 = std::int16_t;
using csSDK_int32 = std::int32_t;
using csSDK_int64 = std::int64_t;
using csSDK_uint8 = std::uint8_t;
using csSDK_uint16 = std::uint16_t;
using csSDK_uint32 = std::uint32_t;
using csSDK_uint64 = std::uint64_t;
using csSDK_size_t = std::uint64_t;

// A four-character code, first character in the lowest byte: fourCC("AVI ") is 0x20495641.
constexpr csSDK_uint32 fourCC(const char (&text)[5]) {
    const auto byte = [&text](int i) { return static_cast<csSDK_uint32>(static_cast<unsigned char>(text[i])); };
    return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
}

using prBool = csSDK_int32;
inline constexpr prBool kPrFalse = 0;
inline constexpr prBool kPrTrue = 1;

using PrTime = csSDK_int64;          // host ticks
using PrAudioSample = csSDK_int64;   // sample frames
using prUTF16Char = char16_t;

// Negative means failure.
using prSuiteError = csSDK_int32;

using PrMemoryPtr = char*;
using PrMemoryHandle = char**;

// The host's reference to an open file: a Win32 handle, all bits set if closed.
using imFileRef = void*;
inline imFileRef imInvalidHandleValue() { return reinterpret_cast<imFileRef>(~std::uintptr_t{0}); }

// A frame buffer, accessible through suites only.
struct PPix;
using PPixHand = PPix**;

// Compile-time checks of a record's layout; every record in this folder uses them.
#define SDK_ASSERT_SIZE(record, bytes) static_assert(sizeof(record) == (bytes), "size of " #record)
#define SDK_ASSERT_OFFSET(record, member, bytes) \
    static_assert(offsetof(record, member) == (bytes), "offset of " #record "::" #member)

#pragma pack(push, 1)

struct prRect {
    csSDK_int32 left = 0;
    csSDK_int32 top = 0;
    csSDK_int32 right = 0;
    csSDK_int32 bottom = 0;
};
SDK_ASSERT_SIZE(prRect, 16);
SDK_ASSERT_OFFSET(prRect, right, 8);

// Opaque texts and colour spaces.
struct PrSDKString {
    csSDK_int64 opaque[2];
};
SDK_ASSERT_SIZE(PrSDKString, 16);

// GUID text including its terminator.
struct prPluginID {
    char text[37];
};
SDK_ASSERT_SIZE(prPluginID, 37);

#pragma pack(pop)
