// The output formats of frames, selected by name.
#pragma once

#include "hostkit/host/FrameStore.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace importhost {

class FrameWriter {
public:
    FrameWriter() = default;
    virtual ~FrameWriter() = default;
    FrameWriter(const FrameWriter&) = delete;
    FrameWriter& operator=(const FrameWriter&) = delete;

    // Throws std::runtime_error with a complete sentence if the frame cannot be written.
    virtual void write(const hostkit::FrameView& frame, std::int64_t index) = 0;
};

struct FrameWriterRow {
    const char* name;
    const char* purpose;
    // `folder` exists; file names begin with `stem`.
    std::unique_ptr<FrameWriter> (*make)(const std::filesystem::path& folder, const std::string& stem);
    bool writesFiles;
};

const std::vector<FrameWriterRow>& frameWriters();

// Null if the name is unknown.
const FrameWriterRow* findFrameWriter(const std::string& name);

// The line that the checksum writer prints for a frame, without a line feed.
std::string checksumLine(const hostkit::FrameView& frame, std::int64_t index);

}  // namespace importhost
