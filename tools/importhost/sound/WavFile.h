// Writes a WAV file of 32-bit float samples with an extensible header, so that any number of channels and their
// speakers can be told. Beyond 4 GiB it is an RF64 file.
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

struct WavFormat {
    std::uint16_t channels;
    std::uint32_t sampleRate;       // Hz
    std::uint32_t mask;             // speakers, as from speakerMaskOf
};

// The bytes before the first sample. RF64, with sizes of 64 bits, where 32 bits do not hold the size of the file.
std::string wavHeader(const WavFormat& format, std::uint64_t sampleFrames);

class WavFile {
public:
    // Makes the file for so many sample frames. Throws std::runtime_error with a whole sentence, as all others do, when
    // it cannot be written.
    WavFile(const std::filesystem::path& path, const WavFormat& format, std::uint64_t sampleFrames);

    // Removes a file that was not finished: its header claims sound that it does not have. Devices and the like stay.
    ~WavFile();
    WavFile(const WavFile&) = delete;
    WavFile& operator=(const WavFile&) = delete;

    // Appends sample frames: one list of equally many samples for each channel.
    void write(const std::vector<std::vector<float>>& samples);

    // Ends the file, once all sample frames are written.
    void finish();

private:
    void put(const std::string& bytes);
    void requireGood() const;

    std::filesystem::path m_path;
    std::ofstream m_out;
    bool m_isFinished = false;
};

}  // namespace importhost
