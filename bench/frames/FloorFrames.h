// The minimum cost of a frame: a loop that already knows where the file's frames are and how to decode them, with the
// same host and the same measurements around it. Any time beyond this is the plug-in's own.
#pragma once

#include "avi/AviParser.h"
#include "codec/CodecInstance.h"
#include "fileio/ByteBuffer.h"
#include "fileio/SystemFile.h"
#include "hostkit/watch/CallSpy.h"
#include "measured/MeasuredPlugin.h"

#include <cstdint>
#include <filesystem>
#include <vector>

class FloorFrames {
public:
    FloorFrames(MeasuredPlugin& plugin, const std::filesystem::path& file);

    // Returns the time in nanoseconds, without returning the frame to the host.
    std::uint64_t getFrame(std::uint64_t frame);

    hostkit::SpiedCall reads;
    hostkit::SpiedCall decodes;

private:
    const PrSDKPPixCreatorSuite* m_creator = nullptr;   // the host's, which the plug-in uses too
    const PrSDKPPixSuite* m_frames = nullptr;
    int m_descriptor;
    fileio::SystemFile m_file;
    std::vector<AviChunk> m_chunks;
    CodecInstance m_codec;
    QuorvaneFormat m_format;
    ByteBuffer m_bytes;
};
