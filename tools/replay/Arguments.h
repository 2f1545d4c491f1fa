// The arguments of a call, as far as its log contains them. Members are empty if the log does not.
#pragma once

#include "replay/LogReader.h"


namespace replay {

struct Arguments {
    std::optional<std::string> path;                    // UTF-8, on the user's system
    std::optional<csSDK_int32> fileStream;              // the stream that the file was opened for
    bool makesImporter = false;                         // the call created a new object
    std::optional<csSDK_uint32> formatIndex;            // index of an import format
    std::optional<csSDK_int32> fileType;
    std::optional<csSDK_int32> infoStream;
    std::vector<std::string> decodeFormats;             // names, in the order offered
    std::optional<std::string> offeredFormat;           // name of the format that the call returned
    std::optional<csSDK_int32> bufferSize;              // bytes
    std::optional<bool> hasPlaceForFrame;
    std::optional<PrTime> time;                         // host ticks
    std::optional<csSDK_uint32> frameIndex;
    bool isOutOfBounds = false;                         // the frame is out of bounds; then its formats are not logged
    std::optional<std::vector<imFrameFormat>> frameFormats;
    std::optional<PrAudioSample> position;              // sample frames
    std::optional<csSDK_uint32> sampleFrames;
    bool wasNotAnnounced = false;                       // the frame was collected without being announced
};

Arguments argumentsOf(const LoggedCall& call);

// A pixel format by its name or, if it has none, by its code as text.
std::optional<csSDK_uint32> pixelFormatOf(std::string_view name, std::string_view codeText);

}  // namespace replay
