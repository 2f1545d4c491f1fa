#include "importhost/sound/WavFile.h"

#include "hostkit/system/Text.h"

#include <bit>
#include <limits>
#include <stdexcept>

namespace importhost {

namespace {

// The label of each bit of a speaker mask, lowest bit first.
constexpr csSDK_int32 kSpeakers[] = {
    kPrAudioChannelLabel_FrontLeft,          kPrAudioChannelLabel_FrontRight,   kPrAudioChannelLabel_FrontCenter,
    kPrAudioChannelLabel_LowFrequency,       kPrAudioChannelLabel_BackLeft,     kPrAudioChannelLabel_BackRight,
    kPrAudioChannelLabel_FrontLeftOfCenter,  kPrAudioChannelLabel_FrontRightOfCenter,
    kPrAudioChannelLabel_BackCenter,         kPrAudioChannelLabel_SideLeft,     kPrAudioChannelLabel_SideRight,
    kPrAudioChannelLabel_TopCenter,          kPrAudioChannelLabel_TopFrontLeft, kPrAudioChannelLabel_TopFrontCenter,
    kPrAudioChannelLabel_TopFrontRight,      kPrAudioChannelLabel_TopBackLeft,  kPrAudioChannelLabel_TopBackCenter,
    kPrAudioChannelLabel_TopBackRight,
};

constexpr std::uint32_t kHeaderBytes = 80;          // up to the first sample
constexpr std::uint32_t kFormatBytes = 40;
constexpr std::uint16_t kExtensible = 0xFFFE;
constexpr std::uint16_t kSampleBits = 32;
// "IEEE float" as a GUID: the old 16-bit tag 3 and the tail that all such GUIDs share.
constexpr unsigned char kFloatGuid[16] = {3, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};

std::uint32_t speakerOf(csSDK_int32 label) {
    std::uint32_t speaker = 1;
    for (const csSDK_int32 known : kSpeakers) {
        if (known == label) {
            return speaker;
        }
        speaker <<= 1;
    }
    return 0;
}

void addNumber(std::string& bytes, std::uint32_t number, int count = 4) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(number >> (8 * i))));
    }
}

}  // namespace

std::uint32_t speakerMaskOf(const std::vector<csSDK_int32>& labels) {
    std::uint32_t mask = 0;
    for (const csSDK_int32 label : labels) {
        const std::uint32_t speaker = speakerOf(label);
        if (speaker <= mask) {      // none, the same again, or one that the mask puts before an earlier channel
            return 0;
        }
        mask |= speaker;
    }
    return mask;
}

WavFile::WavFile(const std::filesystem::path& path, std::uint16_t channels, std::uint32_t sampleRate,
                 std::uint32_t mask)
    : m_name("'" + hostkit::toUtf8(path) + "'"),
      m_out(path, std::ios::binary),
      m_channels(channels),
      m_sampleRate(sampleRate),
      m_mask(mask) {
    put(header());
}

std::string WavFile::header() const {
    const auto dataBytes = static_cast<std::uint32_t>(m_dataBytes);
    const auto frameBytes = static_cast<std::uint32_t>(m_channels * sizeof(float));
    std::string bytes;
    bytes.append("RIFF");
    addNumber(bytes, kHeaderBytes - 8 + dataBytes);
    bytes.append("WAVEfmt ");
    addNumber(bytes, kFormatBytes);
    addNumber(bytes, kExtensible, 2);
    addNumber(bytes, m_channels, 2);
    addNumber(bytes, m_sampleRate);
    addNumber(bytes, m_sampleRate * frameBytes);
    addNumber(bytes, frameBytes, 2);
    addNumber(bytes, kSampleBits, 2);
    addNumber(bytes, 22, 2);                        // what follows of the format
    addNumber(bytes, kSampleBits, 2);               // all bits are in use
    addNumber(bytes, m_mask);
    for (const unsigned char byte : kFloatGuid) {
        bytes.push_back(static_cast<char>(byte));
    }
    bytes.append("fact");                         // wanted for everything that is not integer PCM
    addNumber(bytes, 4);
    addNumber(bytes, dataBytes / frameBytes);
    bytes.append("data");
    addNumber(bytes, dataBytes);
    return bytes;
}

void WavFile::write(const std::vector<std::vector<float>>& samples) {
    const std::size_t frames = samples.empty() ? 0 : samples.front().size();
    const std::uint64_t grown = m_dataBytes + std::uint64_t{frames} * m_channels * sizeof(float);
    if (grown > std::numeric_limits<std::uint32_t>::max() - kHeaderBytes) {
        throw std::length_error(m_name + " would grow beyond 4 GiB; a smaller range fits.");
    }
    std::string bytes;
    bytes.reserve(frames * m_channels * sizeof(float));
    for (std::size_t frame = 0; frame < frames; ++frame) {
        for (const std::vector<float>& channel : samples) {
            addNumber(bytes, std::bit_cast<std::uint32_t>(channel[frame]));
        }
    }
    put(bytes);
    m_dataBytes = grown;
}

void WavFile::finish() {
    m_out.seekp(0);
    put(header());
    m_out.close();
    if (!m_out) {
        throw std::runtime_error(m_name + " cannot be written.");
    }
}

void WavFile::put(const std::string& bytes) {
    m_out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!m_out) {
        throw std::runtime_error(m_name + " cannot be written.");
    }
}

}  // namespace importhost
