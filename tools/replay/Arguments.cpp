#include "replay/Arguments.h"

#include "hostkit/host/PixelFormatTable.h"
#include "replay/LineScan.h"

namespace replay {

namespace {

// "NAME [code]", split into its two parts.
struct FormatText {
    std::string_view name;
    std::string_view code;
};

std::optional<FormatText> scanFormat(std::string_view text) {
    const std::size_t end = text.find(" [");
    if (end == std::string_view::npos || !text.ends_with(']')) {
        return std::nullopt;
    }
    return FormatText{text.substr(0, end), text.substr(end + 2, text.size() - end - 3)};
}

// "[0]: 64 48 PrPixelFormat_YUYV_422_8u_601 [yuy2]".
std::optional<imFrameFormat> scanFrameFormat(std::string_view text) {
    const std::size_t start = text.find(": ");
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(start + 2);
    const std::size_t widthEnd = text.find(' ');
    const std::size_t heightEnd = widthEnd == std::string_view::npos ? widthEnd : text.find(' ', widthEnd + 1);
    if (heightEnd == std::string_view::npos) {
        return std::nullopt;
    }
    const auto width = numberOf<csSDK_int32>(text.substr(0, widthEnd));
    const auto height = numberOf<csSDK_int32>(text.substr(widthEnd + 1, heightEnd - widthEnd - 1));
    const auto names = scanFormat(text.substr(heightEnd + 1));
    const auto format = names ? pixelFormatOf(names->name, names->code) : std::nullopt;
    if (!width || !height || !format) {
        return std::nullopt;
    }
    imFrameFormat result{};
    result.inFrameWidth = *width;
    result.inFrameHeight = *height;
    result.inPixelFormat = *format;
    return result;
}

// A four-character file type, printed with the highest byte first.
std::optional<csSDK_int32> fileTypeOf(std::string_view text) {
    const auto code = codeOfText(text);
    if (!code) {
        return std::nullopt;
    }
    const csSDK_uint32 turned = *code >> 24 | (*code >> 8 & 0xFF00) | (*code << 8 & 0xFF0000) | *code << 24;
    return static_cast<csSDK_int32>(turned);
}

// True if the printed pointer is null: only zeros, or "(nil)".
bool isNull(std::string_view pointer) {
    return pointer == "(nil)" || pointer.find_first_not_of("0x") == std::string_view::npos;
}

class Scan {
public:
    explicit Scan(Arguments& arguments) : m_arguments(arguments) {}

    void take(std::string_view message) {
        takeFile(message);
        takeFormats(message);
        takeFrame(message);
        takeSound(message);
    }

    // A list that is incomplete in the log is dropped.
    void finish() {
        if (m_formatsTold && m_formats.size() == *m_formatsTold) {
            m_arguments.frameFormats = std::move(m_formats);
        }
    }

private:
    void takeFile(std::string_view message) {
        if (const auto opened = textAfter(message, "Open: '")) {
            constexpr std::string_view kStream = "', stream: ";
            const std::size_t end = opened->rfind(kStream);
            if (end != std::string_view::npos) {
                m_arguments.path = opened->substr(0, end);
                m_arguments.fileStream = numberOf<csSDK_int32>(opened->substr(end + kStream.size()));
            }
        } else if (const auto path = textAfter(message, "m_filePathUtf8: '"); path && path->ends_with('\'')) {
            m_arguments.path = path->substr(0, path->size() - 1);
        } else if (const auto stream = numberAfter<csSDK_int32>(message, "m_streamIndex: ")) {
            m_arguments.fileStream = *stream;
        } else if (message == "QuorvaneImporter::QuorvaneImporter()") {
            m_arguments.makesImporter = true;
        }
    }

    void takeFormats(std::string_view message) {
        if (const auto index = textAfter(message, "index ")) {
            m_arguments.formatIndex = numberOf<csSDK_uint32>(index->substr(0, index->find(':')));
        } else if (const auto type = textAfter(message, "filetype: ")) {
            m_arguments.fileType = fileTypeOf(*type);
        } else if (const auto stream = numberAfter<csSDK_int32>(message, "fileInfoRec8P->streamIdx: ")) {
            m_arguments.infoStream = *stream;
        } else if (const auto offered = textAfter(message, "Adding pixel format: ")) {
            m_arguments.offeredFormat = offered->substr(0, offered->find(' '));
        } else if (message == "Decode formats:") {
            m_isInDecodeFormats = true;
            return;
        } else if (m_isInDecodeFormats && message.starts_with("    ")) {
            const std::string_view row = message.substr(4);
            m_arguments.decodeFormats.emplace_back(row.substr(0, row.find(' ')));
            return;
        }
        m_isInDecodeFormats = false;
    }

    void takeFrame(std::string_view message) {
        if (const auto place = textAfter(message, "outFrame: ")) {
            m_arguments.hasPlaceForFrame = !isNull(*place);
        } else if (const auto time = numberAfter<PrTime>(message, "inFrameTime: ")) {
            m_arguments.time = *time;
        } else if (const auto index = textAfter(message, "frameIndex:  ")) {
            m_arguments.frameIndex = numberOf<csSDK_uint32>(index->substr(0, index->find(' ')));
        } else if (message == "frameIndex out of bounds") {
            m_arguments.isOutOfBounds = true;
        } else if (const auto count = numberAfter<csSDK_uint32>(message, "inNumFrameFormats: ")) {
            m_formatsTold = *count;
        } else if (const auto row = textAfter(message, "inFrameFormats[")) {
            if (const auto format = scanFrameFormat(*row)) {
                m_formats.push_back(*format);
            }
        } else if (const auto request = textAfter(message, "REQUEST: ")) {
            takeRequest(*request);
        } else if (const auto bytes = numberAfter<csSDK_int32>(message, "buffersize: ")) {
            m_arguments.bufferSize = *bytes;
        }
    }

    // "Requesting: 3, frameTime: 1000". Frame numbers are unsigned but printed as signed.
    void takeRequest(std::string_view request) {
        const std::size_t colon = request.find(": ");
        const std::size_t comma = request.rfind(", frameTime: ");
        if (colon == std::string_view::npos || comma == std::string_view::npos || comma < colon) {
            return;
        }
        m_arguments.wasNotAnnounced = m_arguments.wasNotAnnounced || request.starts_with("ERROR");
        m_arguments.time = numberOf<PrTime>(request.substr(comma + 13));
        if (!request.starts_with("ERROR")) {
            if (const auto index = numberOf<csSDK_int32>(request.substr(colon + 2, comma - colon - 2))) {
                m_arguments.frameIndex = static_cast<csSDK_uint32>(*index);
            }
        }
    }

    void takeSound(std::string_view message) {
        if (const auto position = numberAfter<PrAudioSample>(message, "importAudioRec7P->position: ")) {
            m_arguments.position = *position;
        } else if (const auto size = numberAfter<csSDK_uint32>(message, "importAudioRec7P->size    : ")) {
            m_arguments.sampleFrames = *size;
        }
    }

    Arguments& m_arguments;
    bool m_isInDecodeFormats = false;
    std::optional<csSDK_uint32> m_formatsTold;
    std::vector<imFrameFormat> m_formats;
};

}  // namespace

std::optional<csSDK_uint32> pixelFormatOf(std::string_view name, std::string_view codeText) {
    for (const hostkit::PixelFormatRow& row : hostkit::pixelFormats()) {
        if (row.name == name) {
            return row.format;
        }
    }
    return codeOfText(codeText);
}

Arguments argumentsOf(const LoggedCall& call) {
    Arguments arguments;
    Scan scan(arguments);
    for (const std::string& message : call.messages) {
        scan.take(message);
    }
    for (const std::string& message : call.decode) {
        scan.take(message);
    }
    scan.finish();
    return arguments;
}

}  // namespace replay
