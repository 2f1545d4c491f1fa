// Requests whose size in bytes does not fit into 32 bits. At 128 bytes per frame, 2^25 + 1 frames wrap to 128 bytes:
// one frame is read, and nothing after it may be used.
#include "audio/support/LoggedSoundTest.h"

#include <algorithm>
#include <bit>

using aviwriter::SampleFormat;

namespace {

constexpr std::uint16_t kChannels = 32;
constexpr std::uint32_t kWrappedFrames = (1u << 25) + 1;
constexpr std::size_t kGuards = 64;     // floats before and after each buffer
constexpr float kGuard = 12345.0f;

// A buffer as long as the request, with guards. Each takes 128 MiB, so there are only two: channels may share one.
class LongBuffer {
public:
    LongBuffer() : m_floats(kWrappedFrames + 2 * kGuards, kGuard) {}

    float* samples() { return m_floats.data() + kGuards; }

    bool isSilentFrom(std::size_t frame) {
        return std::all_of(samples() + frame, samples() + kWrappedFrames, [](float sample) { return sample == 0.0f; });
    }
    bool guardsAreIntact() const {
        const auto isGuard = [](float value) { return value == kGuard; };
        return std::all_of(m_floats.begin(), m_floats.begin() + kGuards, isGuard) &&
               std::all_of(m_floats.end() - kGuards, m_floats.end(), isGuard);
    }

private:
    std::vector<float> m_floats;
};

class WrappedSize : public LoggedSoundTest {
protected:
    // The second-last channel has a buffer of its own; all others share one.
    static constexpr std::size_t kOwnChannel = kChannels - 2;

    Lines requestAll(SoundClip& clip) {
        std::vector<float*> pointers(kChannels, m_shared.samples());
        pointers[kOwnChannel] = m_own.samples();
        hostkit::HostRecord<imImportAudioRec7> record;
        record->position = 0;
        record->size = kWrappedFrames;
        record->buffer = pointers.data();
        record->privateData = clip.session().privateData();
        return logOf([&] { EXPECT_EQ(session().call(imImportAudio7, nullptr, record.data()), imNoErr); });
    }

    void expectOneFrame(SampleFormat samples) {
        const SoundFormat format = {samples, kChannels};
        const Bytes sound = noise(format, 4);
        SoundClip clip(session(), soundFile(format, sound, 64));
        const Lines lines = requestAll(clip);
        EXPECT_EQ(Lines(lines.begin() + 4, lines.end()), (Lines{
                                                             "importAudioRec7P->position: 0",
                                                             "m_audioPosition           : 0",
                                                             "startPos                  : 0",
                                                             "importAudioRec7P->size    : 33554433",
                                                             "endPos                    : 33554433",
                                                             "m_numAudioSampleFrames    : 4",
                                                             "startPosBytes             : 0",
                                                             "sizeBytes                 : 128",
                                                             "reading : 0, 312, 64",
                                                             "reading : 64, 384, 64",
                                                             "fill    : 0",
                                                             "    [imNoErr] (0)",
                                                         }));
        EXPECT_EQ(std::bit_cast<std::uint32_t>(m_own.samples()[0]),
                  referenceSound(format, sound, 0, 1)[kOwnChannel][0]);
        expectSilenceAfter(1);
    }

    void expectSilenceAfter(std::size_t frame) {
        EXPECT_TRUE(m_own.isSilentFrom(frame));
        EXPECT_TRUE(m_shared.isSilentFrom(frame));
        EXPECT_TRUE(m_own.guardsAreIntact());
        EXPECT_TRUE(m_shared.guardsAreIntact());
    }

private:
    LongBuffer m_own;
    LongBuffer m_shared;
};

}  // namespace

TEST_F(WrappedSize, OfIntegersDeliversTheFramesThatWereRead) { expectOneFrame(SampleFormat::pcm32); }

TEST_F(WrappedSize, OfFloatDeliversTheFramesThatWereRead) { expectOneFrame(SampleFormat::float32); }
