// Writes a WAV file of 32-bit float samples with an extensible header, so that any number of channels and their
// speakers can be told.
#pragma once

#include "sdk/SdkImporter.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace importhost {

// The speakers of the channels as a mask, lowest bit first channel. 0, which means "no speakers known", when a channel
// has a label without a speaker or when the channels stand in another order than the mask can tell.
std::uint32_t speakerMaskOf(const std::vector<csSDK_int32>& labels);

class WavFile {
public:
    // Makes the file. Throws std::runtime_error with a whole sentence, as all others do, when it cannot be written.
    WavFile(const std::filesystem::path& path, std::uint16_t channels, std::uint32_t sampleRate, std::uint32_t mask);

    // Appends sample frames: one list of equally many samples for each channel. Throws std::length_error when the file
    // would outgrow the 4 GiB that its header can tell.
    void write(const std::vector<std::vector<float>>& samples);

    // Puts the sizes into the header. A file without finish() has sizes of 0.
    void finish();

    std::uint64_t sampleFrames() const { return m_dataBytes / (m_channels * sizeof(float)); }

private:
    std::string header() const;
    void put(const std::string& bytes);

    std::string m_name;
    std::ofstream m_out;
    std::uint16_t m_channels;
    std::uint32_t m_sampleRate;
    std::uint32_t m_mask;
    std::uint64_t m_dataBytes = 0;
};

}  // namespace importhost
