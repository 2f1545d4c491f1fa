#include "importhost/sound/WavFile.h"

#include "hostkit/system/Text.h"

#include <bit>
#include <stdexcept>
#include <system_error>

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

constexpr std::uint32_t kHeaderBytes = 80;          // before the first sample, without the chunk of 64-bit sizes
constexpr std::uint32_t kChunkHeaderBytes = 8;
constexpr std::uint32_t kFormatBytes = 40;
constexpr std::uint32_t kSizeChunkBytes = 28;
constexpr std::uint32_t kInSizeChunk = 0xFFFFFFFF;  // the size is in the chunk of 64-bit sizes
constexpr std::uint16_t kExtensible = 0xFFFE;
constexpr std::uint16_t kSampleBits = 32;
// "IEEE float" as a GUID: the old 16-bit tag 3 and the suffix shared by all such GUIDs.
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

void addNumber(std::string& bytes, std::uint64_t number, int count = 4) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(number >> (8 * i))));
    }
}

}  // namespace

std::uint32_t speakerMaskOf(const std::vector<csSDK_int32>& labels) {
    std::uint32_t mask = 0;
    for (const csSDK_int32 label : labels) {
        const std::uint32_t speaker = speakerOf(label);
        if (speaker <= mask) {      // no speaker, a repeated one, or one that the mask has before an earlier channel
            return 0;
        }
        mask |= speaker;
    }
    return mask;
}

std::string wavHeader(const WavFormat& format, std::uint64_t sampleFrames) {
    const std::uint32_t frameBytes = format.channels * kSampleBits / 8;
    const std::uint64_t dataBytes = sampleFrames * frameBytes;
    const bool isLarge = dataBytes > kInSizeChunk - (kHeaderBytes - kChunkHeaderBytes);
    std::string bytes;
    if (isLarge) {
        bytes.append("RF64");
        addNumber(bytes, kInSizeChunk);
        bytes.append("WAVEds64");
        addNumber(bytes, kSizeChunkBytes);
        addNumber(bytes, kHeaderBytes + kSizeChunkBytes + dataBytes, 8);     // + 8 of its header - 8 of the file's
        addNumber(bytes, dataBytes, 8);
        addNumber(bytes, sampleFrames, 8);
        addNumber(bytes, 0);                        // no other chunk is as large
    } else {
        bytes.append("RIFF");
        addNumber(bytes, kHeaderBytes - kChunkHeaderBytes + dataBytes);
        bytes.append("WAVE");
    }
    bytes.append("fmt ");
    addNumber(bytes, kFormatBytes);
    addNumber(bytes, kExtensible, 2);
    addNumber(bytes, format.channels, 2);
    addNumber(bytes, format.sampleRate);
    addNumber(bytes, format.sampleRate * frameBytes);
    addNumber(bytes, frameBytes, 2);
    addNumber(bytes, kSampleBits, 2);
    addNumber(bytes, 22, 2);                        // bytes that follow in the format
    addNumber(bytes, kSampleBits, 2);               // all bits are in use
    addNumber(bytes, format.mask);
    for (const unsigned char byte : kFloatGuid) {
        bytes.push_back(static_cast<char>(byte));
    }
    bytes.append("fact");                           // required for everything except integer PCM
    addNumber(bytes, 4);
    addNumber(bytes, isLarge ? kInSizeChunk : sampleFrames);
    bytes.append("data");
    addNumber(bytes, isLarge ? kInSizeChunk : dataBytes);
    return bytes;
}

WavFile::WavFile(const std::filesystem::path& path, const WavFormat& format, std::uint64_t sampleFrames)
    : m_path(path), m_out(path, std::ios::binary) {
    requireGood();
    put(wavHeader(format, sampleFrames));
}

WavFile::~WavFile() {
    std::error_code ignored;
    if (!m_isFinished && std::filesystem::is_regular_file(m_path, ignored)) {
        m_out.close();      // some systems cannot remove an open file
        std::filesystem::remove(m_path, ignored);
    }
}

void WavFile::write(const std::vector<std::vector<float>>& samples) {
    const std::size_t frames = samples.empty() ? 0 : samples.front().size();
    std::string bytes;
    bytes.reserve(frames * samples.size() * sizeof(float));
    for (std::size_t frame = 0; frame < frames; ++frame) {
        for (const std::vector<float>& channel : samples) {
            addNumber(bytes, std::bit_cast<std::uint32_t>(channel[frame]));
        }
    }
    put(bytes);
}

void WavFile::finish() {
    m_out.close();
    requireGood();
    m_isFinished = true;
}

void WavFile::put(const std::string& bytes) {
    m_out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    requireGood();
}

void WavFile::requireGood() const {
    if (!m_out) {
        throw std::runtime_error("'" + hostkit::toUtf8(m_path) + "' cannot be written.");
    }
}

}  // namespace importhost
