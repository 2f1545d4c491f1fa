// The Audio Suite: an integer sample x of b bits is x / 2^(b-1) as a float, and comes back as it was.
#include "probe/Complaints.h"
#include "probe/SuiteChecks.h"

#include <array>
#include <cmath>
#include <functional>
#include <vector>

namespace hostprobe {

namespace {

constexpr csSDK_uint32 kChannels = 2;
constexpr csSDK_uint32 kFrames = 3;
constexpr std::size_t kGuardBytes = 8;
constexpr unsigned char kGuard = 0xA7;
constexpr float kGuardSample = 77.0f;

// A packed little-endian sample, and room behind the last one that must stay as it is.
class PackedSamples {
public:
    PackedSamples(int bits, std::size_t count)
        : m_bytesEach(static_cast<std::size_t>(bits / 8)), m_count(count),
          m_words((count * m_bytesEach + kGuardBytes) / sizeof(csSDK_int32) + 1) {
        std::fill_n(bytes(), count * m_bytesEach + kGuardBytes, kGuard);
    }

    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(m_words.data()); }
    char* chars() { return reinterpret_cast<char*>(m_words.data()); }
    csSDK_int16* shorts() { return reinterpret_cast<csSDK_int16*>(m_words.data()); }
    csSDK_int32* ints() { return m_words.data(); }

    void put(std::size_t index, csSDK_int64 value) {
        for (std::size_t i = 0; i < m_bytesEach; ++i) {
            bytes()[index * m_bytesEach + i] = static_cast<unsigned char>(value >> (8 * i) & 0xFF);
        }
    }

    csSDK_int64 get(std::size_t index) {
        csSDK_int64 value = static_cast<signed char>(bytes()[index * m_bytesEach + m_bytesEach - 1]);
        for (std::size_t i = m_bytesEach - 1; i-- > 0;) {
            value = value * 256 + bytes()[index * m_bytesEach + i];
        }
        return value;
    }

    bool guardIsIntact() {
        const unsigned char* end = bytes() + m_count * m_bytesEach;
        for (std::size_t i = 0; i < kGuardBytes; ++i) {
            if (end[i] != kGuard) {
                return false;
            }
        }
        return true;
    }

private:
    std::size_t m_bytesEach;
    std::size_t m_count;
    std::vector<csSDK_int32> m_words;       // aligned for every width
};

struct Width {
    int bits;
    csSDK_int64 highest;                    // the highest sample that a float can hold
    const char* fromName;
    const char* toName;
    std::function<prSuiteError(PackedSamples& source, float** out, csSDK_uint32 channels, csSDK_uint32 frames)> from;
    std::function<prSuiteError(const float** source, PackedSamples& out, csSDK_uint32 channels, csSDK_uint32 frames)>
        to;
};

// Gone once the check of one width has found something: what follows would only say the same again.
class WidthTrial {
public:
    explicit WidthTrial(const Width& width)
        : m_width(width), m_scale(std::ldexp(1.0, width.bits - 1)),
          m_samples{-static_cast<csSDK_int64>(m_scale), -1, 0, 1, width.highest,
                    static_cast<csSDK_int64>(m_scale / 2)} {}

    void run() {
        if (checkFromInteger() && checkToInteger()) {
            checkClipping();
        }
    }

private:
    using Channel = std::array<float, kFrames + 1>;     // with a guard

    bool isGood(const char* function, prSuiteError error) const {
        if (error < 0) {
            complain(Sentence::CallFailed, {function, std::to_string(error)});
        }
        return error >= 0;
    }

    bool checkFromInteger() {
        PackedSamples packed(m_width.bits, kChannels * kFrames);
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            packed.put(i, m_samples[i]);
        }
        m_left.fill(kGuardSample);
        m_right.fill(kGuardSample);
        float* channels[] = {m_left.data(), m_right.data()};
        if (!isGood(m_width.fromName, m_width.from(packed, channels, kChannels, kFrames))) {
            return false;
        }
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            const float found = channels[i % kChannels][i / kChannels];
            if (found != static_cast<float>(static_cast<double>(m_samples[i]) / m_scale)) {
                complain(Sentence::FromInteger,
                         {m_width.fromName, std::to_string(found), std::to_string(m_samples[i])});
                return false;
            }
        }
        return expectIntact(m_width.fromName, m_left.back() == kGuardSample && m_right.back() == kGuardSample);
    }

    bool checkToInteger() {
        PackedSamples packed(m_width.bits, kChannels * kFrames);
        const float* channels[] = {m_left.data(), m_right.data()};
        if (!isGood(m_width.toName, m_width.to(channels, packed, kChannels, kFrames))) {
            return false;
        }
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            if (packed.get(i) != m_samples[i]) {
                return complainOfInteger(packed.get(i), channels[i % kChannels][i / kChannels]);
            }
        }
        return expectIntact(m_width.toName, packed.guardIsIntact());
    }

    // Floats may lie beyond full scale; integers then stop at their limits.
    void checkClipping() {
        PackedSamples packed(m_width.bits, 2);
        const float loud[] = {2.0f, -2.0f};
        const float* channels[] = {loud};
        if (!isGood(m_width.toName, m_width.to(channels, packed, 1, 2))) {
            return;
        }
        const auto limit = static_cast<csSDK_int64>(m_scale);
        if (packed.get(0) != limit - 1) {
            complainOfInteger(packed.get(0), loud[0]);
        } else if (packed.get(1) != -limit) {
            complainOfInteger(packed.get(1), loud[1]);
        }
    }

    bool complainOfInteger(csSDK_int64 found, float source) const {
        complain(Sentence::ToInteger, {m_width.toName, std::to_string(found), std::to_string(source)});
        return false;
    }

    static bool expectIntact(const char* function, bool isIntact) {
        if (!isIntact) {
            complain(Sentence::SoundOverrun, {function});
        }
        return isIntact;
    }

    const Width& m_width;
    double m_scale;
    std::array<csSDK_int64, kChannels * kFrames> m_samples;
    Channel m_left = {};
    Channel m_right = {};
};

}  // namespace

void checkAudioSuite(const PrSDKAudioSuite& audio) {
    const Width widths[] = {
        {8, 127, "UninterleaveAndConvertFrom8BitInteger", "ConvertAndInterleaveTo8BitInteger",
         [&](PackedSamples& in, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.UninterleaveAndConvertFrom8BitInteger(in.chars(), out, channels, frames);
         },
         [&](const float** in, PackedSamples& out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.ConvertAndInterleaveTo8BitInteger(in, out.chars(), channels, frames);
         }},
        {16, 32767, "UninterleaveAndConvertFrom16BitInteger", "ConvertAndInterleaveTo16BitInteger",
         [&](PackedSamples& in, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.UninterleaveAndConvertFrom16BitInteger(in.shorts(), out, channels, frames);
         },
         [&](const float** in, PackedSamples& out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.ConvertAndInterleaveTo16BitInteger(in, out.shorts(), channels, frames);
         }},
        {24, 8388607, "UninterleaveAndConvertFrom24BitInteger", "ConvertAndInterleaveTo24BitInteger",
         [&](PackedSamples& in, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.UninterleaveAndConvertFrom24BitInteger(in.chars(), out, channels, frames);
         },
         [&](const float** in, PackedSamples& out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.ConvertAndInterleaveTo24BitInteger(in, out.chars(), channels, frames);
         }},
        {32, 2147483520, "UninterleaveAndConvertFrom32BitInteger", "ConvertAndInterleaveTo32BitInteger",
         [&](PackedSamples& in, float** out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.UninterleaveAndConvertFrom32BitInteger(in.ints(), out, channels, frames);
         },
         [&](const float** in, PackedSamples& out, csSDK_uint32 channels, csSDK_uint32 frames) {
             return audio.ConvertAndInterleaveTo32BitInteger(in, out.ints(), channels, frames);
         }},
    };
    for (const Width& width : widths) {
        WidthTrial(width).run();
    }
}

}  // namespace hostprobe
