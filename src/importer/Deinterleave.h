// From interleaved sample bytes to one buffer a channel.
#pragma once

#include <cstddef>
#include <cstdint>

// Copies 32-bit samples bit for bit: sample f of channel c stands at position f * channels + c of `bytes`. Of the last,
// partial frame that `byteCount` cuts off, the whole samples are copied; what lies beyond is silence. Each of the
// `channels` buffers has room for `frames` samples.
void deinterleave32(const std::uint8_t* bytes, std::size_t byteCount, float* const* buffers, std::uint32_t channels,
                    std::uint32_t frames);

// Turns unsigned 8-bit samples into signed ones, in place.
void makeSigned8(std::uint8_t* bytes, std::size_t byteCount);

// Fills samples `from` to `to` of every channel with silence.
void silence(float* const* buffers, std::uint32_t channels, std::uint32_t from, std::uint32_t to);
