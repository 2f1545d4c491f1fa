// Writes a WAV file of 32-bit float samples with an extensible header, which supports any number of channels and their
// speakers. Above 4 GiB it is an RF64 file.
#pragma once

#include "sdk/SdkImporter.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace importhost {

// The speakers of the channels as a mask, lowest bit for the first channel. 0, "no speakers known", if a channel has a
// label without a speaker or the channels are not in the order of the mask.
std::uint32_t speakerMaskOf(const std::vector<csSDK_int32>& labels);

struct WavFormat {
    std::uint16_t channels;
    std::uint32_t sampleRate;       // Hz
    std::uint32_t mask;             // speakers, as from speakerMaskOf
};

// The bytes before the first sample. RF64, with 64-bit sizes, if the size of the file exceeds 32 bits.
std::string wavHeader(const WavFormat& format, std::uint64_t sampleFrames);

class WavFile {
public:
    // Creates the file for `sampleFrames` sample frames. Throws std::runtime_error with a complete sentence on failure,
    // as do the other functions.
    WavFile(const std::filesystem::path& path, const WavFormat& format, std::uint64_t sampleFrames);

    // Removes an unfinished file: its header claims sound that is missing. Devices and the like are not removed.
    ~WavFile();
    WavFile(const WavFile&) = delete;
    WavFile& operator=(const WavFile&) = delete;

    // Appends sample frames: one list of equally many samples per channel.
    void write(const std::vector<std::vector<float>>& samples);

    // Completes the file. Call it after all sample frames have been written.
    void finish();

private:
    void put(const std::string& bytes);
    void requireGood() const;

    std::filesystem::path m_path;
    std::ofstream m_out;
    bool m_isFinished = false;
};

}  // namespace importhost
