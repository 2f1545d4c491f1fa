// Hosts whose sound converters scale, swap, clip or overrun.
#include "WrongCase.h"

#include <algorithm>

using enum hostprobe::Sentence;
using Suite = PrSDKAudioSuite;

WrongCases wrongSound() {
    return {
        {"Scale", FromInteger, "UninterleaveAndConvertFrom16BitInteger returned -1.000031 for -32768.",
         changed(&Suite::UninterleaveAndConvertFrom16BitInteger,
                 [](const csSDK_int16* in, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
                     for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                         out[i % channels][i / channels] = static_cast<float>(in[i]) / 32767.0f;
                     }
                 })},
        {"UnsignedBytes", FromInteger, "UninterleaveAndConvertFrom8BitInteger returned 0.000000 for -128.",
         changed(&Suite::UninterleaveAndConvertFrom8BitInteger,
                 [](const char* in, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
                     for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                         const auto byte = static_cast<unsigned char>(in[i]);
                         out[i % channels][i / channels] = (static_cast<float>(byte) - 128.0f) / 128.0f;
                     }
                 })},
        {"SwappedChannels", FromInteger, "UninterleaveAndConvertFrom32BitInteger returned -0.000000 for -2147483648.",
         changed(&Suite::UninterleaveAndConvertFrom32BitInteger,
                 [](const csSDK_int32*, float** out, csSDK_uint32, csSDK_uint32 frames) {
                     std::swap_ranges(out[0], out[0] + frames, out[1]);
                 })},
        {"OneSampleTooMany", SoundOverrun, "UninterleaveAndConvertFrom24BitInteger wrote past its buffer.",
         changed(&Suite::UninterleaveAndConvertFrom24BitInteger,
                 [](const char*, float** out, csSDK_uint32, csSDK_uint32 frames) { out[0][frames] = 0.0f; })},
        {"NotTheSameBack", ToInteger, "ConvertAndInterleaveTo16BitInteger returned -32767 for -1.000000.",
         changed(&Suite::ConvertAndInterleaveTo16BitInteger,
                 [](const float** in, csSDK_int16* out, csSDK_uint32 channels, csSDK_uint32 frames) {
                     for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                         out[i] = static_cast<csSDK_int16>(in[i % channels][i / channels] * 32767.0f);
                     }
                 })},
        {"LoudSoundWraps", ToInteger, "ConvertAndInterleaveTo8BitInteger returned 0 for 2.000000.",
         changed(&Suite::ConvertAndInterleaveTo8BitInteger,
                 [](const float** in, char* out, csSDK_uint32 channels, csSDK_uint32 frames) {
                     for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                         out[i] = static_cast<char>(static_cast<int>(in[i % channels][i / channels] * 128.0f));
                     }
                 })},
        {"LoudSoundStopsEarly", ToInteger, "ConvertAndInterleaveTo32BitInteger returned -2147483647 for -2.000000.",
         changed(&Suite::ConvertAndInterleaveTo32BitInteger,
                 [](const float**, csSDK_int32* out, csSDK_uint32 channels, csSDK_uint32) {
                     out[1] += channels == 1 ? 1 : 0;
                 })},
        {"BytesTooMany", SoundOverrun, "ConvertAndInterleaveTo24BitInteger wrote past its buffer.",
         changed(&Suite::ConvertAndInterleaveTo24BitInteger,
                 [](const float**, char* out, csSDK_uint32 channels, csSDK_uint32 frames) {
                     out[3 * channels * frames] = 0;
                 })},
    };
}
