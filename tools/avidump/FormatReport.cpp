#include "avidump/FormatReport.h"

#include "importer/WaveFormat.h"
#include "text/FourCC.h"

#include <cstddef>
#include <cstring>
#include <vector>

namespace avidump {

namespace {

using FormatBytes = std::vector<std::uint8_t>;

std::string hex(const FormatBytes& bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

template <typename Value>
Value at(const FormatBytes& bytes, std::size_t position) {
    Value value{};
    if (position + sizeof value <= bytes.size()) {
        std::memcpy(&value, bytes.data() + position, sizeof value);
    }
    return value;
}

// A BITMAPINFOHEADER; the codec's own data follows it.
void addVideoFields(Report& format, const FormatBytes& bytes) {
    format["biSize"] = at<std::uint32_t>(bytes, 0);
    format["biWidth"] = at<std::int32_t>(bytes, 4);
    format["biHeight"] = at<std::int32_t>(bytes, 8);
    format["biPlanes"] = at<std::uint16_t>(bytes, 12);
    format["biBitCount"] = at<std::uint16_t>(bytes, 14);
    format["biCompression"] = FourCCToString(at<std::uint32_t>(bytes, 16), false);
    format["biSizeImage"] = at<std::uint32_t>(bytes, 20);
}

void addExtensibleFields(Report& format, const FormatBytes& bytes) {
    format["wValidBitsPerSample"] = at<std::uint16_t>(bytes, offsetof(WaveFormatExtensible, wValidBitsPerSample));
    format["dwChannelMask"] = at<std::uint32_t>(bytes, offsetof(WaveFormatExtensible, dwChannelMask));
    format["SubFormat"] = guidText(at<Guid>(bytes, offsetof(WaveFormatExtensible, SubFormat)));
}

void addSoundFields(Report& format, const FormatBytes& bytes) {
    const auto tag = at<std::uint16_t>(bytes, offsetof(WaveFormatExtensible, wFormatTag));
    format["wFormatTag"] = tag;
    format["nChannels"] = at<std::uint16_t>(bytes, offsetof(WaveFormatExtensible, nChannels));
    format["nSamplesPerSec"] = at<std::uint32_t>(bytes, offsetof(WaveFormatExtensible, nSamplesPerSec));
    format["nAvgBytesPerSec"] = at<std::uint32_t>(bytes, offsetof(WaveFormatExtensible, nAvgBytesPerSec));
    format["nBlockAlign"] = at<std::uint16_t>(bytes, offsetof(WaveFormatExtensible, nBlockAlign));
    format["wBitsPerSample"] = at<std::uint16_t>(bytes, offsetof(WaveFormatExtensible, wBitsPerSample));
    format["cbSize"] = at<std::uint16_t>(bytes, offsetof(WaveFormatExtensible, cbSize));
    if (tag == kWaveFormatExtensibleTag) {
        addExtensibleFields(format, bytes);
    }
}

}  // namespace

Report formatOf(const AviStream& stream) {
    const FormatBytes& bytes = stream.format();
    Report format{{"bytes", bytes.size()}};
    if (stream.header().fccType == fourCC("vids")) {
        addVideoFields(format, bytes);
    } else if (stream.header().fccType == fourCC("auds")) {
        addSoundFields(format, bytes);
    }
    format["extraData"] = hex(stream.formatExtraData());
    return format;
}

}  // namespace avidump
