#include "importer/AudioInfo.h"

#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/Numbers.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// Maximum sample rate that an invalid description reports, in Hz.
constexpr std::uint32_t kMaxReportedRate = 192000;
constexpr std::uint32_t kMinReportedRate = 1000;

// Labels of the mask's bits, lowest first. The host orders some speakers differently: the centre ones at 0x40 to 0x100
// and the top ones from 0x2000.
constexpr PrAudioChannelLabel kMaskLabels[] = {
    kPrAudioChannelLabel_FrontLeft,         kPrAudioChannelLabel_FrontRight,
    kPrAudioChannelLabel_FrontCenter,       kPrAudioChannelLabel_LowFrequency,
    kPrAudioChannelLabel_BackLeft,          kPrAudioChannelLabel_BackRight,
    kPrAudioChannelLabel_FrontLeftOfCenter, kPrAudioChannelLabel_FrontRightOfCenter,
    kPrAudioChannelLabel_BackCenter,        kPrAudioChannelLabel_SideLeft,
    kPrAudioChannelLabel_SideRight,         kPrAudioChannelLabel_TopCenter,
    kPrAudioChannelLabel_TopFrontLeft,      kPrAudioChannelLabel_TopFrontCenter,
    kPrAudioChannelLabel_TopFrontRight,     kPrAudioChannelLabel_TopBackLeft,
    kPrAudioChannelLabel_TopBackCenter,     kPrAudioChannelLabel_TopBackRight,
};
constexpr unsigned kMaskBits = 32;

// The sample type of a valid format. Float is 32-bit float whatever its declared bit count.
PrAudioSampleType sampleTypeOf(const WaveFormatExtensible& format) {
    if (subFormatOf(format) == subFormatOfTag(kWaveFormatIeeeFloat)) {
        return kPrAudioSampleType_32BitFloat;
    }
    switch (format.wBitsPerSample) {
    case 8: return kPrAudioSampleType_8BitInt;
    case 16: return kPrAudioSampleType_16BitInt;
    case 24: return kPrAudioSampleType_24BitInt;
    case 32: return kPrAudioSampleType_32BitInt;
    default: return kPrAudioSampleType_Other;
    }
}

const char* sampleTypeName(PrAudioSampleType type) {
    switch (type) {
    case kPrAudioSampleType_8BitInt: return "8 bit";
    case kPrAudioSampleType_16BitInt: return "16 bit";
    case kPrAudioSampleType_24BitInt: return "24 bit";
    case kPrAudioSampleType_32BitInt: return "32 bit";
    case kPrAudioSampleType_32BitFloat: return "32 bit float";
    default: return "Unknown sample type";
    }
}

// Stereo and 5.1 have a usual order; for other counts a plain format does not say which speakers it uses.
std::uint32_t channelMaskOf(const WaveFormatExtensible& format) {
    if (format.wFormatTag == kWaveFormatExtensibleTag) {
        return format.dwChannelMask;
    }
    return format.nChannels == 2 || format.nChannels == 6 ? 0xFFFFFFFFu : 0;
}

}  // namespace

AudioInfo::AudioInfo(fileio::File& file, LazyImporterSuites& suites) : m_file(file), m_suites(suites) {
    Log("AudioInfo::AudioInfo()");
}

AudioInfo::~AudioInfo() {
    Log("AudioInfo::~AudioInfo()");
}

csSDK_int32 AudioInfo::parse(const AviStream& stream) {
    m_valid = false;
    m_stream = &stream;
    m_numAudioSampleFrames = stream.header().dwLength;
    if (stream.format().size() < kMinWaveFormatBytes) {
        Log("Avi audio stream format size is too small: %d", static_cast<int>(stream.format().size()));
        return imBadFile;
    }
    readFormat(stream.format());
    if (!checkFormat()) {
        return imBadFile;
    }
    m_sampleType = sampleTypeOf(m_format);
    m_audioPosition = 0;
    m_valid = true;
    return imNoErr;
}

void AudioInfo::readFormat(const std::vector<std::uint8_t>& bytes) {
    m_format = {};
    std::memcpy(&m_format, bytes.data(), std::min(avi::kWaveFormatExSize, bytes.size()));
    const std::size_t stated = std::size_t{m_format.cbSize} + avi::kWaveFormatExSize;
    std::memcpy(&m_format, bytes.data(), std::min({stated, sizeof m_format, bytes.size()}));
}

bool AudioInfo::checkFormat() const {
    const Guid subFormat = subFormatOf(m_format);
    if (subFormat != subFormatOfTag(kWaveFormatPcm) && subFormat != subFormatOfTag(kWaveFormatIeeeFloat)) {
        Log("Avi unsupported audio stream format: %s", guidText(subFormat).c_str());
        return false;
    }
    if (m_format.nChannels > kMaxAudioChannelCount) {
        Log("Avi too many audio channels: %d", m_format.nChannels);
        return false;
    }
    const unsigned bits = m_format.wBitsPerSample;
    if (bits != 8 && bits != 16 && bits != 24 && bits != 32) {
        Log("Avi unsupported audio bits per sample: %d", static_cast<int>(bits));
        return false;
    }
    if (m_format.nBlockAlign != m_format.nChannels * (bits / 8)) {
        Log("Avi audio stream format error: nBlockAlign != nChannels * (wBitsPerSample / 8)");
        return false;
    }
    return true;
}

csSDK_int32 AudioInfo::getChannelLayout(csSDK_int32* labels) const {
    if (!m_valid) {
        return imUnsupported;
    }
    const int count = std::min<int>(m_format.nChannels, kMaxAudioChannelCount);
    const std::uint32_t mask = channelMaskOf(m_format);
    int slot = 0;
    for (unsigned bit = 0; bit < kMaskBits && slot < count; ++bit) {
        if ((mask >> bit & 1) != 0) {
            labels[slot++] = bit < std::size(kMaskLabels) ? kMaskLabels[bit] : kPrAudioChannelLabel_Discrete;
        }
    }
    Log("Audio channel layout (%d channels):", m_format.nChannels);
    for (int i = 0; i < count; ++i) {
        Log("    %d: %s", i, ChannelLabelName(labels[i]));
    }
    return imNoErr;
}

void AudioInfo::dumpAndFill(imFileInfoRec8* fileInfo) const {
    if (!m_valid) {
        Log("Audio is INVALID! Dummy:");
    }
    Log("Audio info:");
    Log("    wFormatTag:      %d", m_format.wFormatTag);
    Log("    format guid:     %s", guidText(subFormatOf(m_format)).c_str());
    Log("    nChannels:       %d", m_format.nChannels);
    Log("    nSamplesPerSec:  %d", static_cast<int>(m_format.nSamplesPerSec));
    Log("    wBitsPerSample:  %d", m_format.wBitsPerSample);
    Log("    dwChannelMask:   0x%x", static_cast<unsigned>(m_format.dwChannelMask));
    Log("    numSampleFrames: %d", static_cast<int>(m_numAudioSampleFrames));

    if (m_valid) {
        fileInfo->audInfo.numChannels = m_format.nChannels;
        fileInfo->audInfo.sampleRate = static_cast<float>(m_format.nSamplesPerSec);
        fileInfo->audInfo.sampleType = m_sampleType;
        fileInfo->audDuration = m_numAudioSampleFrames;
    } else {
        const std::uint32_t statedRate = m_format.nSamplesPerSec;
        const std::uint32_t rate = std::clamp(statedRate, kMinReportedRate, kMaxReportedRate);
        fileInfo->audInfo.numChannels = std::clamp<csSDK_int32>(m_format.nChannels, 1, kMaxAudioChannelCount);
        fileInfo->audInfo.sampleRate = static_cast<float>(rate);
        fileInfo->audInfo.sampleType = kPrAudioSampleType_Other;
        fileInfo->audDuration = 0;
    }
}

std::string AudioInfo::summary() const {
    if (!m_valid) {
        return "Invalid audio stream\n";
    }
    return "Size: " + mebibytes(m_stream->totalBytes()) + "\n" +
           "Channels: " + std::to_string(m_format.nChannels) + "\n" +
           "Rate: " + std::to_string(m_format.nSamplesPerSec) + " Hz\n" +
           "Type: " + sampleTypeName(m_sampleType) + "\n";
}
