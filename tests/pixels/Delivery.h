// Sends pictures through the plug-in: writes them to a file, imports it, and compares the host's buffers.
#pragma once

#include "hostkit/sessions/FrameClip.h"
#include "pixels/ReferenceImage.h"
#include "support/LoadedImporter.h"

#include <filesystem>
#include <vector>

namespace pixels {

// Writes a file with one frame per picture, at 25 frames per second.
void writeClip(const std::filesystem::path& path, const standin::StreamInfo& info,
               const std::vector<standin::Picture>& pictures);

// Checks that a frame holds exactly these rows, and that nothing was written between them.
::testing::AssertionResult holdsRows(const hostkit::FrameAnswer& answer, const std::vector<Row>& rows);

// The first bytes of the frame's row, counted from the lowest address; empty without a frame.
Row bytesOfRow(const hostkit::FrameAnswer& answer, std::uint32_t row, std::size_t count);

}  // namespace pixels
