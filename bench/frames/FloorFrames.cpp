#include "bench/frames/FloorFrames.h"

#include "text/FourCC.h"

#include <stdexcept>
#include <unistd.h>

namespace {

// Packed 4:2:2 as the host has it.
QuorvaneFormat packed422() {
    QuorvaneFormat request = preparedFormat();
    request.type = 4;
    request.flags = kQuorvaneFlip;
    request.colorSpace = kQuorvaneRec601;
    request.range = kQuorvaneLimitedRange;
    return request;
}

template <class Functions>
const Functions* suite(const SPBasicSuite& suites, const char* name, csSDK_int32 version) {
    const void* table = nullptr;
    suites.AcquireSuite(name, version, &table);
    return static_cast<const Functions*>(table);
}

}  // namespace

FloorFrames::FloorFrames(MeasuredPlugin& plugin, const std::filesystem::path& file) {
    const SPBasicSuite& suites = *plugin.stdParms()->piSuites->utilFuncs->getSPBasicSuite();
    m_creator = suite<PrSDKPPixCreatorSuite>(suites, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion);
    m_frames = suite<PrSDKPPixSuite>(suites, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion);
    AviParser avi;
    if (!m_file.open(file.c_str(), fileio::kOpenRead | fileio::kOpenShareRead) || !avi.parse(m_file)) {
        throw std::runtime_error("the clip does not open");
    }
    m_descriptor = static_cast<int>(reinterpret_cast<std::intptr_t>(m_file.nativeHandle()));
    const AviStream& stream = *avi.streams().at(avi.streamsOfType(fourCC("vids")).at(0));
    for (std::uint64_t frame = 0; frame < stream.chunkCount(); ++frame) {
        m_chunks.push_back(stream.chunk(frame));
    }
    m_format = m_codec.decompressBegin(stream.formatExtraData(), packed422());
}

std::uint64_t FloorFrames::getFrame(std::uint64_t frame) {
    const std::uint64_t start = hostkit::nanosecondsNow();
    const AviChunk& chunk = m_chunks[frame % m_chunks.size()];
    m_bytes.growTo(chunk.size);
    lseek(m_descriptor, static_cast<off_t>(chunk.offset), SEEK_SET);
    const std::uint64_t readStart = hostkit::nanosecondsNow();
    if (read(m_descriptor, m_bytes.data(), chunk.size) != static_cast<ssize_t>(chunk.size)) {
        throw std::runtime_error("the clip cannot be read");
    }
    reads.add(m_bytes.data(), chunk.size, hostkit::nanosecondsNow() - readStart);

    const prRect bounds = {0, 0, static_cast<csSDK_int32>(m_format.width), static_cast<csSDK_int32>(m_format.height)};
    PPixHand ppix = nullptr;
    char* pixels = nullptr;
    csSDK_int32 rowBytes = 0;
    m_creator->CreatePPix(&ppix, PrPPixBufferAccess_WriteOnly, PrPixelFormat_YUYV_422_8u_601, &bounds);
    m_frames->GetPixels(ppix, PrPPixBufferAccess_WriteOnly, &pixels);
    m_frames->GetRowBytes(ppix, &rowBytes);
    std::array<QuorvanePlane, 4> planes;
    planes[0].address = reinterpret_cast<std::uintptr_t>(pixels);
    planes[0].rowBytes = static_cast<std::uint32_t>(rowBytes);
    planes[0].size = m_format.height * planes[0].rowBytes;
    const std::uint64_t decodeStart = hostkit::nanosecondsNow();
    m_codec.decompress(m_bytes.data(), chunk.size, planes);
    decodes.add(m_bytes.data(), chunk.size, hostkit::nanosecondsNow() - decodeStart);
    const std::uint64_t taken = hostkit::nanosecondsNow() - start;
    hostkit::LightHost::dispose(ppix);
    return taken;
}
