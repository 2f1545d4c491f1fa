#include "importhost/clips/SoundFormat.h"

#include "avi/AviParser.h"
#include "fileio/SystemFile.h"
#include "hostkit/system/Text.h"
#include "importer/WaveFormat.h"
#include "text/FourCC.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace importhost {

namespace {

struct FormatName {
    std::uint32_t tag;
    std::string_view name;
};

constexpr FormatName kFormatNames[] = {
    {0x0001, "PCM"},           {0x0002, "Microsoft ADPCM"}, {0x0003, "IEEE float"}, {0x0006, "A-law"},
    {0x0007, "mu-law"},        {0x0011, "IMA ADPCM"},       {0x0031, "GSM 6.10"},   {0x0050, "MPEG layer 1 or 2"},
    {0x0055, "MP3"},           {0x00FF, "AAC"},             {0x0160, "WMA"},        {0x0161, "WMA"},
    {0x0162, "WMA"},           {0x0163, "WMA"},             {0x2000, "AC-3"},       {0x2001, "DTS"},
    {0x566F, "Vorbis"},        {0xF1AC, "FLAC"},
};

std::string formatName(std::uint32_t tag) {
    const auto* known = std::find_if(std::begin(kFormatNames), std::end(kFormatNames),
                                     [tag](const FormatName& row) { return row.tag == tag; });
    char number[16] = {};
    std::snprintf(number, sizeof(number), "0x%04X", static_cast<unsigned>(tag));
    return known == std::end(kFormatNames) ? std::string("format ") + number
                                           : std::string(known->name) + " (" + number + ")";
}

// Fields missing from a short record are 0.
std::string formatText(const std::vector<std::uint8_t>& bytes) {
    WaveFormatExtensible format;
    std::memcpy(&format, bytes.data(), std::min(bytes.size(), sizeof format));
    return formatName(subFormatOf(format).data1) + ", " + std::to_string(format.nChannels) +
           (format.nChannels == 1 ? " channel, " : " channels, ") +
           std::to_string(format.nSamplesPerSec) + " Hz, " + std::to_string(format.wBitsPerSample) + " bits";
}

}  // namespace

std::string noSoundText(const std::filesystem::path& path, csSDK_int32 stream) {
    const std::string name = "'" + hostkit::toUtf8(path) + "'";
    fileio::SystemFile file;
    AviParser parser;
    if (file.open(path.u16string().c_str(), fileio::kOpenRead | fileio::kOpenShareRead) && parser.parse(file)) {
        const std::vector<std::size_t> sounds = parser.streamsOfType(fourCC("auds"));
        if (static_cast<std::size_t>(stream) < sounds.size()) {
            const AviStream& sound = *parser.streams()[sounds[static_cast<std::size_t>(stream)]];
            return name + " has sound in stream " + std::to_string(stream) + " that the plug-in does not take: " +
                   formatText(sound.format()) + ".";
        }
    }
    return name + " has no sound in stream " + std::to_string(stream) + ".";
}

}  // namespace importhost
