// The least that a frame can cost: a loop that knows beforehand where the file's frames lie and how they are decoded,
// with the same host and the same watches around it. What a request takes beyond this is the plug-in's own.
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

    // Gives the nanoseconds it took, without the frame's way back to the host.
    std::uint64_t getFrame(std::uint64_t frame);

    hostkit::SpiedCall reads;
    hostkit::SpiedCall decodes;

private:
    const PrSDKPPixCreatorSuite* m_creator = nullptr;   // the host's, as the plug-in has them
    const PrSDKPPixSuite* m_frames = nullptr;
    int m_descriptor;
    fileio::SystemFile m_file;
    std::vector<AviChunk> m_chunks;
    CodecInstance m_codec;
    QuorvaneFormat m_format;
    ByteBuffer m_bytes;
};
