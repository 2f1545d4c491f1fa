// Converts interleaved sample bytes to one buffer per channel.
#pragma once

#include <cstddef>
#include <cstdint>

// Copies 32-bit samples bit for bit: sample f of channel c is at position f * channels + c of `bytes`. If `byteCount`
// ends within a frame, its complete samples are copied; the rest is silence. Each of the `channels` buffers has room
// for `frames` samples.
void deinterleave32(const std::uint8_t* bytes, std::size_t byteCount, float* const* buffers, std::uint32_t channels,
                    std::uint32_t frames);

// Converts unsigned 8-bit samples to signed, in place.
void makeSigned8(std::uint8_t* bytes, std::size_t byteCount);

// Fills samples [from, to) of every channel with silence.
void silence(float* const* buffers, std::uint32_t channels, std::uint32_t from, std::uint32_t to);
