// Small AVI files for the importer's tests: streams described by a few fields, with defaults for all of them.
//
//   Bytes file = aviFile({videoStream({.frames = {frameOf(video, 40), frameOf(video, 50)}}), audioStream({})});
#pragma once

#include "aviwriter/Blocks.h"
#include "standin/Encoder.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

using aviwriter::Bytes;

// A video stream for the stand-in codec. The default type is 4:4:4, whose samples come out of the decoder unchanged.
struct VideoSketch {
    std::uint32_t type = 103;
    std::uint32_t width = 8;                    // pixels
    std::uint32_t height = 4;
    std::uint32_t rate = 25;                    // rate / scale frames per second
    std::uint32_t scale = 1;
    std::uint32_t colorSpace = 1;               // Rec.601
    std::uint32_t range = 1;                    // limited
    std::string_view handler = "QVAN";
    std::optional<Bytes> extraData = {};        // of the format (default: the codec's own)
    std::vector<Bytes> frames = {};             // compressed; an empty one is a dropped frame
};

// A compressed frame of the stream in which every sample is `value`.
Bytes frameOf(const VideoSketch& video, std::uint16_t value);

// `count` frames: every sample of frame n is 40 + n.
std::vector<Bytes> framesOf(const VideoSketch& video, std::uint32_t count);
constexpr int kFirstFrameValue = 40;

// The extra data that the codec needs in the stream's format.
Bytes extraDataOf(const VideoSketch& video);

struct AudioSketch {
    std::optional<Bytes> format = {};           // data of "strf" (default: 16-bit stereo at 48000 Hz)
    std::uint32_t length = 100;                 // sample frames, in the stream's header
    std::vector<Bytes> chunks = {Bytes(400)};
};

// A stream as stored in the file.
struct StreamSketch {
    aviwriter::StreamHeader header = {};
    Bytes format = {};
    std::vector<Bytes> chunks = {};
};

StreamSketch videoStream(const VideoSketch& video);
StreamSketch audioStream(const AudioSketch& audio);

// A video stream of `frames` frames.
StreamSketch shortVideo(std::uint32_t frames = 3, VideoSketch video = {});

// A file with headers, the chunks of one stream after another, and "idx1".
Bytes aviFile(const std::vector<StreamSketch>& streams);
