// The contract of the codec library quorvane_common64.dll: its eleven functions and the two records they exchange. The
// library is imported by name; any library that keeps this contract can replace it.
//
// Result code 0 means success; any other value is a failure, whose text quorvane_get_string returns. Handle 0 is
// invalid. Calls on one handle must not overlap; different handles are independent.
#pragma once

#include <cstddef>
#include <cstdint>

// A pixel format, compressed or not, in requests and answers.
struct QuorvaneFormat {
    std::uint32_t width = 0;        // pixels; 0 in a request
    std::uint32_t height = 0;       // pixels; 0 in a request
    std::uint32_t word2 = 0;        // 254 before every call
    std::uint32_t word3 = 0;        // 1 before every call
    std::uint32_t type = 0;         // pixel type number
    std::uint32_t flags = 0;        // QuorvaneFlag bits
    std::uint32_t colorSpace = 0;   // QuorvaneColorSpace
    std::uint32_t range = 0;        // QuorvaneRange
    std::uint32_t word8 = 0;        // stays as the library returned it
};
static_assert(sizeof(QuorvaneFormat) == 36);
static_assert(offsetof(QuorvaneFormat, type) == 16 && offsetof(QuorvaneFormat, word8) == 32);

// One plane of a frame buffer that the library writes into.
struct QuorvanePlane {
    std::uint64_t address = 0;      // of the plane's first byte
    std::uint32_t rowBytes = 0;     // from one row to the next
    std::uint32_t size = 0;         // bytes: row bytes times frame height
};
static_assert(sizeof(QuorvanePlane) == 16);

enum QuorvaneFlag : std::uint32_t {
    kQuorvaneFlip = 1,              // deliver the bottom row first
    kQuorvaneRange32768 = 2,        // scale 16-bit samples to 0 ... 32768
};

enum QuorvaneColorSpace : std::uint32_t { kQuorvaneRec601 = 1, kQuorvaneRec709 = 2 };

enum QuorvaneRange : std::uint32_t { kQuorvaneLimitedRange = 1, kQuorvaneFullRange = 2 };

enum QuorvaneStringCategory : std::uint32_t {
    kQuorvaneTypeName = 1,
    kQuorvaneErrorText = 2,
    kQuorvaneColorSpaceName = 3,
    kQuorvaneParameterName = 4,
};

enum QuorvaneParameter : std::uint32_t {
    kQuorvaneCanFlip = 7,
    kQuorvaneSupportsRange32768 = 9,
};

extern "C" {

// Counted: each init is paired with one close; several may be outstanding.
std::uint32_t quorvane_library_init();
std::uint32_t quorvane_library_close();

// Opens an instance and writes its handle; closes it.
std::uint32_t quorvane_open(std::uint32_t* handle);
std::uint32_t quorvane_close(std::uint32_t handle);

// Returns a zero-terminated 8-bit text owned by the library, never null.
const char* quorvane_get_string(std::uint32_t category, std::uint32_t value);

// Reads a parameter into `value` (`size` is 4). For the capability parameters, `value` is a pixel type number on entry
// and the answer, zero or nonzero, on return.
std::uint32_t quorvane_get_param(std::uint32_t handle, std::uint32_t parameter, void* value, std::uint32_t size);

// Checks whether the encoder accepts `input`, and describes what it would make of it.
std::uint32_t quorvane_compress_query(std::uint32_t handle, const QuorvaneFormat* input, QuorvaneFormat* output,
                                      std::uint64_t* further, void* reserved);

// Without a request: describes the stream. With one: returns 0 if the stream can be decoded into it.
std::uint32_t quorvane_decompress_query(std::uint32_t handle, const void* compressedFormat, std::uint32_t count,
                                        const QuorvaneFormat* request, QuorvaneFormat* output);

// Opens the handle's only decode session; `output` describes what will be delivered.
std::uint32_t quorvane_decompress_begin(std::uint32_t handle, const void* compressedFormat, std::uint32_t count,
                                        const QuorvaneFormat* request, QuorvaneFormat* output);

// Decodes one frame of `size` bytes into the four planes.
std::uint32_t quorvane_decompress(std::uint32_t handle, const void* frame, std::uint32_t size,
                                  const QuorvanePlane* planes);

// Closes the session.
std::uint32_t quorvane_decompress_end(std::uint32_t handle);

}
