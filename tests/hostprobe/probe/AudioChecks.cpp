// The Audio Suite: an integer sample x of b bits is x / 2^(b-1) as a float, and is converted back to itself.
#include "probe/Complaints.h"
#include "probe/SuiteChecks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace hostprobe {

namespace {

constexpr csSDK_uint32 kChannels = 2;
constexpr csSDK_uint32 kFrames = 3;
constexpr std::size_t kGuardBytes = 8;
constexpr unsigned char kGuard = 0xA7;
constexpr float kGuardSample = 77.0f;

// Packed little-endian samples, and room after the last one that must not change.
class PackedSamples {
public:
    PackedSamples(int bits, std::size_t count)
        : m_bytesEach(static_cast<std::size_t>(bits / 8)), m_count(count),
          m_words((count * m_bytesEach + kGuardBytes) / sizeof(csSDK_int32) + 1) {
        std::fill_n(as<unsigned char>(), count * m_bytesEach + kGuardBytes, kGuard);
    }

    template <class Sample>
    Sample* as() { return reinterpret_cast<Sample*>(m_words.data()); }

    void put(std::size_t index, csSDK_int64 value) {
        for (std::size_t i = 0; i < m_bytesEach; ++i) {
            as<unsigned char>()[index * m_bytesEach + i] = static_cast<unsigned char>(value >> (8 * i) & 0xFF);
        }
    }

    csSDK_int64 get(std::size_t index) {
        csSDK_int64 value = as<signed char>()[index * m_bytesEach + m_bytesEach - 1];
        for (std::size_t i = m_bytesEach - 1; i-- > 0;) {
            value = value * 256 + as<unsigned char>()[index * m_bytesEach + i];
        }
        return value;
    }

    bool guardIsIntact() {
        const unsigned char* end = as<unsigned char>() + m_count * m_bytesEach;
        return std::all_of(end, end + kGuardBytes, [](unsigned char byte) { return byte == kGuard; });
    }

private:
    std::size_t m_bytesEach;
    std::size_t m_count;
    std::vector<csSDK_int32> m_words;       // aligned for every width
};

// The two converters of one width. Ends at the first complaint: more of them would only repeat it.
template <class Sample>
class WidthTrial {
public:
    using From = prSuiteError (*)(const Sample* source, float** out, csSDK_uint32 channels, csSDK_uint32 frames);
    using To = prSuiteError (*)(const float** source, Sample* out, csSDK_uint32 channels, csSDK_uint32 frames);

    // `highest` is the highest sample that a float can hold.
    WidthTrial(int bits, csSDK_int64 highest, From from, To to)
        : m_bits(bits), m_scale(std::ldexp(1.0, bits - 1)),
          m_samples{-static_cast<csSDK_int64>(m_scale), -1, 0, 1, highest, static_cast<csSDK_int64>(m_scale / 2)},
          m_fromName("UninterleaveAndConvertFrom" + std::to_string(bits) + "BitInteger"),
          m_toName("ConvertAndInterleaveTo" + std::to_string(bits) + "BitInteger"), m_from(from), m_to(to) {}

    void run() {
        if (checkFromInteger() && checkToInteger()) {
            checkClipping();
        }
    }

private:
    using Channel = std::array<float, kFrames + 1>;     // with a guard

    bool checkFromInteger() {
        PackedSamples packed(m_bits, kChannels * kFrames);
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            packed.put(i, m_samples[i]);
        }
        m_left.fill(kGuardSample);
        m_right.fill(kGuardSample);
        float* channels[] = {m_left.data(), m_right.data()};
        if (!expectGood(m_fromName.c_str(), m_from(packed.as<Sample>(), channels, kChannels, kFrames))) {
            return false;
        }
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            const float found = channels[i % kChannels][i / kChannels];
            if (!expect(found == static_cast<float>(static_cast<double>(m_samples[i]) / m_scale), Sentence::FromInteger,
                        {m_fromName, std::to_string(found), std::to_string(m_samples[i])})) {
                return false;
            }
        }
        return expect(m_left.back() == kGuardSample && m_right.back() == kGuardSample, Sentence::SoundOverrun,
                      {m_fromName});
    }

    bool checkToInteger() {
        PackedSamples packed(m_bits, kChannels * kFrames);
        const float* channels[] = {m_left.data(), m_right.data()};
        if (!expectGood(m_toName.c_str(), m_to(channels, packed.as<Sample>(), kChannels, kFrames))) {
            return false;
        }
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            if (!expectInteger(packed.get(i), m_samples[i], channels[i % kChannels][i / kChannels])) {
                return false;
            }
        }
        return expect(packed.guardIsIntact(), Sentence::SoundOverrun, {m_toName});
    }

    // Floats beyond full scale become the highest or lowest integer.
    void checkClipping() {
        PackedSamples packed(m_bits, 2);
        const float loud[] = {2.0f, -2.0f};
        const float* channels[] = {loud};
        const auto limit = static_cast<csSDK_int64>(m_scale);
        if (expectGood(m_toName.c_str(), m_to(channels, packed.as<Sample>(), 1, 2)) &&
            expectInteger(packed.get(0), limit - 1, loud[0])) {
            expectInteger(packed.get(1), -limit, loud[1]);
        }
    }

    bool expectInteger(csSDK_int64 found, csSDK_int64 wanted, float source) const {
        return expect(found == wanted, Sentence::ToInteger,
                      {m_toName, std::to_string(found), std::to_string(source)});
    }

    int m_bits;
    double m_scale;
    std::array<csSDK_int64, kChannels * kFrames> m_samples;
    std::string m_fromName;
    std::string m_toName;
    From m_from;
    To m_to;
    Channel m_left = {};
    Channel m_right = {};
};

}  // namespace

void checkAudioSuite(const PrSDKAudioSuite& audio) {
    WidthTrial<char>(8, 127, audio.UninterleaveAndConvertFrom8BitInteger, audio.ConvertAndInterleaveTo8BitInteger)
        .run();
    WidthTrial<csSDK_int16>(16, 32767, audio.UninterleaveAndConvertFrom16BitInteger,
                            audio.ConvertAndInterleaveTo16BitInteger).run();
    WidthTrial<char>(24, 8388607, audio.UninterleaveAndConvertFrom24BitInteger,
                     audio.ConvertAndInterleaveTo24BitInteger).run();
    WidthTrial<csSDK_int32>(32, 2147483520, audio.UninterleaveAndConvertFrom32BitInteger,
                            audio.ConvertAndInterleaveTo32BitInteger).run();
}

}  // namespace hostprobe
