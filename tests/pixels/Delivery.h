// Pictures on their way through the plug-in: written to a file, imported, and looked at in the host's buffer.
#pragma once

#include "pixels/ReferenceImage.h"
#include "support/LoadedImporter.h"

#include <filesystem>
#include <vector>

namespace pixels {

// A file of one frame per picture, 25 frames per second.
void writeClip(const std::filesystem::path& path, const standin::StreamInfo& info,
               const std::vector<standin::Picture>& pictures);

// A file open in the plug-in; frames are asked for by number.
class OpenClip {
public:
    // A clip that does not open fails the test and delivers no frames.
    OpenClip(LoadedImporter& importer, const std::filesystem::path& path);

    std::vector<PrPixelFormat> offeredFormats() { return m_clip.pixelFormats(); }
    hostkit::FrameAnswer frame(csSDK_int64 number, PrPixelFormat format);
    csSDK_int64 frameCount() const { return hostkit::frameCount(m_info); }
    hostkit::ClipSession& session() { return m_clip; }

private:
    LoadedImporter& m_importer;
    hostkit::ClipSession m_clip;
    imFileInfoRec8 m_info = {};
};

// Whether a frame holds exactly these rows, and nothing was written between them.
::testing::AssertionResult holdsRows(const hostkit::FrameAnswer& answer, const std::vector<Row>& rows);

// The first bytes of the frame's row, counted from the lowest address; empty without a frame.
Row bytesOfRow(const hostkit::FrameAnswer& answer, std::uint32_t row, std::size_t count);

}  // namespace pixels
