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

}  // namespace

FloorFrames::FloorFrames(hostkit::LightHost& host, const std::filesystem::path& file) : m_host(host) {
    if (!m_file.open(file.c_str(), fileio::kOpenRead | fileio::kOpenShareRead) || !m_avi.parse(m_file)) {
        throw std::runtime_error("the clip does not open");
    }
    m_descriptor = static_cast<int>(reinterpret_cast<std::intptr_t>(m_file.nativeHandle()));
    m_stream = m_avi.streams().at(m_avi.streamsOfType(fourCC("vids")).at(0)).get();
    m_format = m_codec.decompressBegin(m_stream->formatExtraData(), packed422());
}

void FloorFrames::getFrame(std::uint64_t frame) {
    const AviChunk& chunk = m_stream->chunk(frame % m_stream->chunkCount());
    m_bytes.growTo(chunk.size);
    lseek(m_descriptor, static_cast<off_t>(chunk.offset), SEEK_SET);
    const std::uint64_t readStart = hostkit::nanosecondsNow();
    if (read(m_descriptor, m_bytes.data(), chunk.size) != static_cast<ssize_t>(chunk.size)) {
        throw std::runtime_error("the clip cannot be read");
    }
    reads.add(m_bytes.data(), chunk.size, hostkit::nanosecondsNow() - readStart);

    const prRect bounds = {0, 0, static_cast<csSDK_int32>(m_format.width), static_cast<csSDK_int32>(m_format.height)};
    const PPixHand ppix = m_host.lend(bounds);
    std::array<QuorvanePlane, 4> planes;
    planes[0].address = reinterpret_cast<std::uintptr_t>(m_host.pixelsOf(ppix));
    planes[0].rowBytes = static_cast<std::uint32_t>(m_host.rowBytesOf(ppix));
    planes[0].size = m_format.height * planes[0].rowBytes;
    const std::uint64_t decodeStart = hostkit::nanosecondsNow();
    m_codec.decompress(m_bytes.data(), chunk.size, planes);
    decodes.add(m_bytes.data(), chunk.size, hostkit::nanosecondsNow() - decodeStart);
    hostkit::LightHost::dispose(ppix);
}
