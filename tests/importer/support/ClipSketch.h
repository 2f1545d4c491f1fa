// Small AVI files for the importer's tests: streams sketched in a few words, every part of them replaceable.
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

// A video stream that the stand-in codec decodes. 4:4:4 unless another type is asked for: a sample of its pictures
// comes out of the decoder as it went in.
struct VideoSketch {
    std::uint32_t type = 103;
    std::uint32_t width = 8;                    // pixels
    std::uint32_t height = 4;
    std::uint32_t rate = 25;                    // rate / scale frames per second
    std::uint32_t scale = 1;
    std::uint32_t colorSpace = 1;               // Rec.601
    std::uint32_t range = 1;                    // limited
    std::string_view handler = "QVAN";
    std::optional<Bytes> extraData = {};        // of the format; the codec's own unless given
    std::vector<Bytes> frames = {};             // compressed; one left empty is a dropped frame
};

// A compressed frame of the stream in which every sample has this value.
Bytes frameOf(const VideoSketch& video, std::uint16_t value);

// So many frames: frame n has the value 40 + n.
std::vector<Bytes> framesOf(const VideoSketch& video, std::uint32_t count);
constexpr int kFirstFrameValue = 40;

// The format's extra data that the codec wants for the stream.
Bytes extraDataOf(const VideoSketch& video);

struct AudioSketch {
    std::optional<Bytes> format = {};           // of "strf"; 16-bit stereo at 48000 Hz unless given
    std::uint32_t length = 100;                 // sample frames, as the stream's header states them
    std::vector<Bytes> chunks = {Bytes(400)};
};

// A stream as the file holds it.
struct StreamSketch {
    aviwriter::StreamHeader header = {};
    Bytes format = {};
    std::vector<Bytes> chunks = {};
};

StreamSketch videoStream(const VideoSketch& video);
StreamSketch audioStream(const AudioSketch& audio);

// A video stream of so many frames, ready to be put into a file.
StreamSketch shortVideo(std::uint32_t frames = 3, VideoSketch video = {});

// Headers, the chunks of all streams one stream after the other, and "idx1".
Bytes aviFile(const std::vector<StreamSketch>& streams);
