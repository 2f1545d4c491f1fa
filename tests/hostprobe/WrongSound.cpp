// Hosts whose sound converters scale, swap, clip or overrun.
#include "WrongCase.h"

using enum hostprobe::Sentence;
using Host = PlayedHost;

namespace {

const PrSDKAudioSuite& good() { return Host::current().good.audio; }

template <class Spoil>
auto spoilt(Spoil spoil) {
    return [spoil](Host& host) {
        spoil(host.used.audio);
        host.play();
    };
}

}  // namespace

WrongCases wrongSound() {
    return {
        {"Scale", FromInteger, "UninterleaveAndConvertFrom16BitInteger gave -1.000031 for -32768.",
         spoilt([](PrSDKAudioSuite& used) {
             used.UninterleaveAndConvertFrom16BitInteger = [](const csSDK_int16* in, float** out, csSDK_uint32 channels,
                                                              csSDK_uint32 frames) {
                 for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                     out[i % channels][i / channels] = static_cast<float>(in[i]) / 32767.0f;
                 }
                 return prSuiteError{0};
             };
         })},
        {"UnsignedBytes", FromInteger, "UninterleaveAndConvertFrom8BitInteger gave 0.000000 for -128.",
         spoilt([](PrSDKAudioSuite& used) {
             used.UninterleaveAndConvertFrom8BitInteger = [](const char* in, float** out, csSDK_uint32 channels,
                                                             csSDK_uint32 frames) {
                 for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                     const auto byte = static_cast<unsigned char>(in[i]);
                     out[i % channels][i / channels] = (static_cast<float>(byte) - 128.0f) / 128.0f;
                 }
                 return prSuiteError{0};
             };
         })},
        {"SwappedChannels", FromInteger, "UninterleaveAndConvertFrom32BitInteger gave -0.000000 for -2147483648.",
         spoilt([](PrSDKAudioSuite& used) {
             used.UninterleaveAndConvertFrom32BitInteger = [](const csSDK_int32* in, float** out, csSDK_uint32 channels,
                                                              csSDK_uint32 frames) {
                 float* swapped[] = {out[1], out[0]};
                 return good().UninterleaveAndConvertFrom32BitInteger(in, swapped, channels, frames);
             };
         })},
        {"OneSampleTooMany", SoundOverrun, "UninterleaveAndConvertFrom24BitInteger wrote past its buffer.",
         spoilt([](PrSDKAudioSuite& used) {
             used.UninterleaveAndConvertFrom24BitInteger = [](const char* in, float** out, csSDK_uint32 channels,
                                                              csSDK_uint32 frames) {
                 out[0][frames] = 0.0f;
                 return good().UninterleaveAndConvertFrom24BitInteger(in, out, channels, frames);
             };
         })},
        {"NotTheSameBack", ToInteger, "ConvertAndInterleaveTo16BitInteger gave -32767 for -1.000000.",
         spoilt([](PrSDKAudioSuite& used) {
             used.ConvertAndInterleaveTo16BitInteger = [](const float** in, csSDK_int16* out, csSDK_uint32 channels,
                                                          csSDK_uint32 frames) {
                 for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                     out[i] = static_cast<csSDK_int16>(in[i % channels][i / channels] * 32767.0f);
                 }
                 return prSuiteError{0};
             };
         })},
        {"LoudSoundWraps", ToInteger, "ConvertAndInterleaveTo8BitInteger gave 0 for 2.000000.",
         spoilt([](PrSDKAudioSuite& used) {
             used.ConvertAndInterleaveTo8BitInteger = [](const float** in, char* out, csSDK_uint32 channels,
                                                         csSDK_uint32 frames) {
                 for (csSDK_uint32 i = 0; i < channels * frames; ++i) {
                     out[i] = static_cast<char>(static_cast<int>(in[i % channels][i / channels] * 128.0f));
                 }
                 return prSuiteError{0};
             };
         })},
        {"LoudSoundStopsEarly", ToInteger, "ConvertAndInterleaveTo32BitInteger gave -2147483647 for -2.000000.",
         spoilt([](PrSDKAudioSuite& used) {
             used.ConvertAndInterleaveTo32BitInteger = [](const float** in, csSDK_int32* out, csSDK_uint32 channels,
                                                          csSDK_uint32 frames) {
                 const prSuiteError error = good().ConvertAndInterleaveTo32BitInteger(in, out, channels, frames);
                 out[1] += channels == 1 ? 1 : 0;
                 return error;
             };
         })},
        {"BytesTooMany", SoundOverrun, "ConvertAndInterleaveTo24BitInteger wrote past its buffer.",
         spoilt([](PrSDKAudioSuite& used) {
             used.ConvertAndInterleaveTo24BitInteger = [](const float** in, char* out, csSDK_uint32 channels,
                                                          csSDK_uint32 frames) {
                 out[3 * channels * frames] = 0;
                 return good().ConvertAndInterleaveTo24BitInteger(in, out, channels, frames);
             };
         })},
        {"FromIntegerFails", CallFailed, "UninterleaveAndConvertFrom8BitInteger failed with -1.",
         spoilt([](PrSDKAudioSuite& used) {
             used.UninterleaveAndConvertFrom8BitInteger = [](const char*, float**, csSDK_uint32, csSDK_uint32) {
                 return prSuiteError{-1};
             };
         })},
        {"ToIntegerFails", CallFailed, "ConvertAndInterleaveTo32BitInteger failed with -1.",
         spoilt([](PrSDKAudioSuite& used) {
             used.ConvertAndInterleaveTo32BitInteger = [](const float**, csSDK_int32*, csSDK_uint32, csSDK_uint32) {
                 return prSuiteError{-1};
             };
         })},
    };
}
