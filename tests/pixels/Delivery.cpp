#include "pixels/Delivery.h"

#include "aviwriter/AviFileWriter.h"

#include <cstring>
#include <string>

namespace pixels {

namespace {

constexpr std::uint8_t kUndelivered = 0xCD;

::testing::AssertionResult differs(std::size_t row, std::size_t byte, std::uint8_t found, std::uint8_t wanted) {
    return ::testing::AssertionFailure() << "row " << row << ", byte " << byte << ": " << int{found} << " instead of "
                                         << int{wanted};
}

}  // namespace

void writeClip(const std::filesystem::path& path, const standin::StreamInfo& info,
               const std::vector<standin::Picture>& pictures) {
    aviwriter::FileSink sink(path);
    aviwriter::VideoTrack video;
    video.width = info.width;
    video.height = info.height;
    video.extraData = standin::encodeExtraData(info);
    aviwriter::AviFileWriter writer(sink, {}, video, {});
    for (const standin::Picture& picture : pictures) {
        writer.writeVideo(standin::encodeFrame(info, picture));
    }
    writer.finish();
    sink.close();
}

::testing::AssertionResult holdsRows(const hostkit::FrameAnswer& answer, const std::vector<Row>& rows) {
    const auto view = answer.frame.view();
    if (!view) {
        return ::testing::AssertionFailure() << "no frame, result " << answer.result;
    }
    if (view->height() != static_cast<csSDK_int32>(rows.size())) {
        return ::testing::AssertionFailure() << "height " << view->height() << " instead of " << rows.size();
    }
    const auto rowBytes = static_cast<std::size_t>(view->rowBytes);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        const std::uint8_t* found = view->pixels + y * rowBytes;
        for (std::size_t i = 0; i < rowBytes; ++i) {
            const std::uint8_t wanted = i < rows[y].size() ? rows[y][i] : kUndelivered;
            if (found[i] != wanted) {
                return differs(y, i, found[i], wanted);
            }
        }
    }
    return ::testing::AssertionSuccess();
}

Row bytesOfRow(const hostkit::FrameAnswer& answer, std::uint32_t row, std::size_t count) {
    const auto view = answer.frame.view();
    EXPECT_TRUE(view) << "no frame, result " << answer.result;
    if (!view) {
        return {};
    }
    const std::uint8_t* first = view->pixels + std::size_t{row} * static_cast<std::size_t>(view->rowBytes);
    return Row(first, first + count);
}

}  // namespace pixels
