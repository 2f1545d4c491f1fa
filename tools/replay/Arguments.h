// What a logged call tells of the arguments that it was made with. Members are empty where the log tells nothing.
#pragma once

#include "replay/LogReader.h"


namespace replay {

struct Arguments {
    std::optional<std::string> path;                    // UTF-8, as the user's system had it
    std::optional<csSDK_int32> fileStream;              // the stream that the file was opened for
    bool makesImporter = false;                         // the call began with a new object
    std::optional<csSDK_uint32> formatIndex;            // of the import formats
    std::optional<csSDK_int32> fileType;
    std::optional<csSDK_int32> infoStream;
    std::vector<std::string> decodeFormats;             // names, in the order in which they are offered
    std::optional<std::string> offeredFormat;           // name of the one that the call gave
    std::optional<csSDK_int32> bufferSize;              // bytes
    std::optional<bool> hasPlaceForFrame;
    std::optional<PrTime> time;                         // host ticks
    std::optional<csSDK_uint32> frameIndex;
    bool isOutOfBounds = false;                         // the frame; its formats are not told then
    std::optional<std::vector<imFrameFormat>> frameFormats;
    std::optional<PrAudioSample> position;              // sample frames
    std::optional<csSDK_uint32> sampleFrames;
    bool wasNotAnnounced = false;                       // a frame that was collected all the same
};

Arguments argumentsOf(const LoggedCall& call);

// A pixel format by its name or, for one without a name, by its code's text.
std::optional<csSDK_uint32> pixelFormatOf(std::string_view name, std::string_view codeText);

}  // namespace replay
