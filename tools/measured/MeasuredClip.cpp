#include "measured/MeasuredClip.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace {

void expect(csSDK_int32 expected, csSDK_int32 result, const char* what) {
    if (result != expected) {
        throw std::runtime_error(std::string(what) + ": " + std::to_string(result));
    }
}

}  // namespace

MeasuredClip::MeasuredClip(MeasuredPlugin& plugin, const std::filesystem::path& path, csSDK_uint32 audioFrames)
    : m_plugin(plugin), m_clip(plugin.session(), path) {
    expect(imNoErr, m_clip.openResult(), "open");
    if (m_clip.info().hasVideo) {
        for (csSDK_int64 frame = 0; frame < m_clip.frameCount(); ++frame) {
            m_times.push_back(m_clip.timeOf(frame));
        }
        m_formats = {{0, 0, m_clip.formats().at(0)}};
    }
    m_channels.assign(static_cast<std::size_t>(std::max(hostkit::valueOf(m_clip.info().audInfo.numChannels), 0)),
                      std::vector<float>(audioFrames));
    for (std::vector<float>& channel : m_channels) {
        m_buffers.push_back(channel.data());
    }
}

MeasuredClip::~MeasuredClip() { closeAsync(); }

imSourceVideoRec MeasuredClip::recordFor(csSDK_int64 frame, void* privateData, PPixHand* delivered) {
    imSourceVideoRec record{};
    record.inPrivateData = privateData;
    record.inFrameTime = m_times[static_cast<std::size_t>(frame) % m_times.size()];
    record.inFrameFormats = m_formats.data();
    record.inNumFrameFormats = static_cast<csSDK_int32>(m_formats.size());
    record.outFrame = delivered;
    return record;
}

std::uint64_t MeasuredClip::getFrame(csSDK_int64 frame) {
    PPixHand delivered = nullptr;
    imSourceVideoRec record = recordFor(frame, m_clip.session().privateData(), &delivered);
    const std::uint64_t start = hostkit::nanosecondsNow();
    const csSDK_int32 result = m_plugin.call(imGetSourceVideo, m_clip.session().fileRef(), &record);
    const std::uint64_t taken = hostkit::nanosecondsNow() - start;
    expect(imNoErr, result, "frame");
    hostkit::LightHost::dispose(delivered);
    return taken;
}

void MeasuredClip::getSound(PrAudioSample position, csSDK_uint32 frames) {
    imImportAudioRec7 record{};
    record.position = position;
    record.size = frames;
    record.buffer = m_buffers.data();
    record.privateData = m_clip.session().privateData();
    expect(imNoErr, m_plugin.call(imImportAudio7, m_clip.session().fileRef(), &record), "sound");
}

void MeasuredClip::quiet() { expect(imNoErr, m_clip.session().quiet(), "quiet"); }

void MeasuredClip::openAsync() {
    m_async.inPrivateData = m_clip.session().privateData();
    expect(imNoErr, m_plugin.call(imCreateAsyncImporter, &m_async, nullptr), "asynchronous importer");
}

void MeasuredClip::announce(csSDK_int64 frame) {
    aiAsyncRequest request{};
    request.inPrivateData = m_async.outAsyncPrivateData;
    request.inSourceRec = recordFor(frame, m_async.outAsyncPrivateData, nullptr);
    expect(aiNoError, m_async.outAsyncEntry(aiInitiateAsyncRead, &request), "announcement");
}

void MeasuredClip::collect(csSDK_int64 frame) {
    PPixHand delivered = nullptr;
    imSourceVideoRec record = recordFor(frame, m_async.outAsyncPrivateData, &delivered);
    expect(aiNoError, m_async.outAsyncEntry(aiGetFrame, &record), "collection");
    hostkit::LightHost::dispose(delivered);
}

void MeasuredClip::flush() {
    expect(aiNoError, m_async.outAsyncEntry(aiFlush, m_async.outAsyncPrivateData), "flush");
}

void MeasuredClip::closeAsync() {
    if (m_async.outAsyncPrivateData != nullptr) {
        m_async.outAsyncEntry(aiClose, m_async.outAsyncPrivateData);
        m_async = {};
    }
}
