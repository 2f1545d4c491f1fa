#include "files/SampleClip.h"

#include "aviwriter/TestPicture.h"

namespace {

constexpr PrPixelFormat kFormat = PrPixelFormat_YUYV_422_8u_709;

standin::StreamInfo streamOf(const aviwriter::SampleOptions& options) {
    return {options.type, options.width, options.height, options.colorSpace, pixels::kLimited};
}

}  // namespace

aviwriter::SampleOptions smallSample() {
    aviwriter::SampleOptions options;
    options.type = 104;
    options.width = 64;
    options.height = 36;
    options.frames = 8;
    return options;
}

void writeSampleFile(const std::filesystem::path& path, const aviwriter::SampleOptions& options) {
    aviwriter::FileSink sink(path);
    aviwriter::writeSample(options, sink);
    sink.close();
}

::testing::AssertionResult showsFrame(hostkit::FrameClip& clip, const aviwriter::SampleOptions& options,
                                      std::uint32_t number) {
    const standin::StreamInfo info = streamOf(options);
    return pixels::holdsRows(clip.frame(number, kFormat),
                             pixels::referenceRows(info, aviwriter::TestPicture(info).frame(number),
                                                   pixels::hostFormat(kFormat)));
}

::testing::AssertionResult showsTestPicture(hostkit::FrameClip& clip, const aviwriter::SampleOptions& options) {
    if (clip.frameCount() != options.frames) {
        return ::testing::AssertionFailure() << clip.frameCount() << " frames instead of " << options.frames;
    }
    for (std::uint32_t number = 0; number < options.frames; ++number) {
        const auto shown = showsFrame(clip, options, number);
        if (!shown) {
            return ::testing::AssertionFailure() << "frame " << number << ": " << shown.message();
        }
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult imports(const std::filesystem::path& path, const aviwriter::SampleOptions& options) {
    LoadedImporter importer;
    hostkit::FrameClip clip(importer.session(), path);
    return showsTestPicture(clip, options);
}
