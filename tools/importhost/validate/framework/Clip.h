// The files that checks look at: those of the user, or samples written for the run.
#pragma once

#include "aviwriter/Sample.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace importhost::validate {

enum class ClipKind {
    Good,           // written whole; the plug-in must import it
    Damaged,        // AVI once: it may be imported as far as it goes, or refused
    Foreign,        // never was AVI: to be refused
    Unknown,        // the user's
};

struct Clip {
    std::filesystem::path path;
    std::string name;                               // the file's name, UTF-8; with its folder where two files share it
    ClipKind kind = ClipKind::Unknown;
    std::optional<aviwriter::SampleOptions> made;   // of a good sample: what was written
};

// A sample to write: which level needs it first, and why it exists.
struct SampleRow {
    int level = 1;
    std::string name;
    std::string_view purpose;
    ClipKind kind = ClipKind::Good;
    aviwriter::SampleOptions options{};             // of the good file, before any damage
    aviwriter::Bytes (*damage)(aviwriter::Bytes bytes) = nullptr;
};

const std::vector<SampleRow>& sampleRows();

// Writes a new file, with its folder. Throws std::runtime_error if it cannot be written.
void writeFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

// Writes the samples up to `level` into `folder`, which exists. Throws std::runtime_error when it cannot be written.
void writeSamples(const std::filesystem::path& folder, int level);

// The user's files, or without any the samples that writeSamples put into `folder`.
std::vector<Clip> clipsOf(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                          int level);

}  // namespace importhost::validate
