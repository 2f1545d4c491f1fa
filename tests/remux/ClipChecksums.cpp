// clip_checksums FILE: imports a file with the plug-in in this program's folder, and prints a line for each frame in
// each offered format and one for each second of sound. Two files with equal content print the same lines. Exit codes:
// 0 success, 1 something did not import, 2 usage error.
#include "hostkit/sessions/FrameClip.h"
#include "hostkit/system/Text.h"

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

constexpr csSDK_uint32 kAudioBlock = 48000;

// FNV-1a.
class Checksum {
public:
    void add(const void* data, std::size_t size) {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        for (std::size_t i = 0; i < size; ++i) {
            m_value = (m_value ^ bytes[i]) * 1099511628211U;
        }
    }
    unsigned long long value() const { return m_value; }

private:
    std::uint64_t m_value = 14695981039346656037U;
};

void require(csSDK_int32 result, const char* call) {
    if (result != imNoErr) {
        throw std::runtime_error(std::string(call) + " returned " + std::to_string(result));
    }
}

void printFrames(hostkit::FrameClip& clip) {
    for (const PrPixelFormat format : clip.formats()) {
        for (std::int64_t number = 0; number < clip.frameCount(); ++number) {
            const hostkit::FrameAnswer answer = clip.frame(number, format);
            require(answer.result, "imGetSourceVideo");
            const auto view = answer.frame.view().value();
            Checksum sum;
            sum.add(view.pixels, view.size);
            std::printf("%s frame %d: %dx%d %016llx\n", hostkit::codeText(format).c_str(), static_cast<int>(number),
                        view.width(), view.height(), sum.value());
        }
    }
}

void printSound(hostkit::FrameClip& clip) {
    for (PrAudioSample at = 0; at < clip.info().audDuration; at += kAudioBlock) {
        const hostkit::AudioAnswer answer = clip.sound(at, kAudioBlock);
        require(answer.result, "imImportAudio7");
        Checksum sum;
        for (const std::vector<float>& channel : answer.channels) {
            sum.add(channel.data(), channel.size() * sizeof(float));
        }
        std::printf("sound %d: %016llx\n", static_cast<int>(at), sum.value());
    }
}

void printClip(const std::filesystem::path& path) {
    hostkit::Host host;
    const hostkit::PluginLibrary plugin(hostkit::PluginLibrary::programFolder() /
                                        hostkit::PluginLibrary::usualFileName());
    hostkit::ImporterSession session(host, plugin.entry());
    session.start();
    {
        hostkit::FrameClip clip(session, path);
        require(clip.openResult(), "imOpenFile8");
        require(clip.isDescribed() ? csSDK_int32{imNoErr} : clip.infoResult(), "imGetInfo8");
        printFrames(clip);
        printSound(clip);
    }
    session.shutdown();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: clip_checksums FILE\n");
        return 2;
    }
    try {
        printClip(hostkit::pathFromUtf8(argv[1]));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
        return 1;
    }
}
