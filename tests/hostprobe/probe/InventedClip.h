// The clip that every file turns out to be: twelve small pictures, and sound in three streams.
#pragma once

#include "sdk/SdkImporter.h"

namespace hostprobe {

inline constexpr csSDK_int32 kFileType = 0x50524F42;
inline constexpr csSDK_int32 kSubType = 0x54534554;
inline constexpr csSDK_int32 kWidth = 50;           // not a multiple of any format's group
inline constexpr csSDK_int32 kHeight = 28;
inline constexpr csSDK_int32 kFramesPerSecond = 25;
inline constexpr csSDK_int32 kFrameCount = 12;
inline constexpr PrAudioSample kSoundLength = 23040;
inline constexpr float kSoundRate = 48000.0f;

inline constexpr csSDK_int32 kStereo[] = {kPrAudioChannelLabel_FrontLeft, kPrAudioChannelLabel_FrontRight};
inline constexpr csSDK_int32 kMono[] = {kPrAudioChannelLabel_FrontCenter};
inline constexpr csSDK_int32 kSurround[] = {kPrAudioChannelLabel_FrontLeft,   kPrAudioChannelLabel_FrontRight,
                                            kPrAudioChannelLabel_FrontCenter, kPrAudioChannelLabel_LowFrequency,
                                            kPrAudioChannelLabel_SideLeft,    kPrAudioChannelLabel_SideRight};

struct StreamFacts {
    bool hasVideo;
    csSDK_int32 channels;
    const csSDK_int32* labels;
};

inline constexpr StreamFacts kStreams[] = {{true, 2, kStereo}, {false, 1, kMono}, {false, 6, kSurround}};
inline constexpr csSDK_int32 kStreamCount = 3;

inline constexpr PrPixelFormat kOffered[] = {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_YUYV_422_8u_601,
                                             PrPixelFormat_V210_422_10u_601};
inline constexpr csSDK_int32 kOfferedCount = 3;

// Different in each channel at every position.
constexpr float soundAt(PrAudioSample position, csSDK_int32 channel) {
    return static_cast<float>((position * 37 + channel * 101) % 2000 - 1000) / 2000.0f;
}

// Paints the whole buffer, padding and all, up to its last byte.
void paint(char* pixels, csSDK_int32 rowBytes, csSDK_int32 height, PrPixelFormat format, csSDK_int64 frame);

}  // namespace hostprobe
