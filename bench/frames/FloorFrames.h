// The least that a frame can cost: a loop that knows beforehand where the file's frames lie and how they are decoded,
// with the same host and the same watches around it. What a request takes beyond this is the plug-in's own.
#pragma once

#include "avi/AviParser.h"
#include "codec/CodecInstance.h"
#include "fileio/ByteBuffer.h"
#include "fileio/SystemFile.h"
#include "hostkit/CallSpy.h"
#include "hostkit/LightHost.h"

#include <cstdint>
#include <filesystem>

class FloorFrames {
public:
    FloorFrames(hostkit::LightHost& host, const std::filesystem::path& file);

    void getFrame(std::uint64_t frame);

    hostkit::SpiedCall reads;
    hostkit::SpiedCall decodes;

private:
    hostkit::LightHost& m_host;
    int m_descriptor;
    fileio::SystemFile m_file;
    AviParser m_avi;
    const AviStream* m_stream = nullptr;
    CodecInstance m_codec;
    QuorvaneFormat m_format;
    ByteBuffer m_bytes;
};
