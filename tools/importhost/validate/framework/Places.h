// Where a run keeps what it writes, below its work folder.
#pragma once

#include <filesystem>
#include <string_view>

namespace importhost::validate {

inline std::filesystem::path samplesFolder(const std::filesystem::path& workFolder) { return workFolder / "samples"; }

// A check's own folder, and in it the files that outlive a crash.
inline std::filesystem::path checkFolder(const std::filesystem::path& workFolder, std::string_view id) {
    return workFolder / "checks" / id;
}
inline std::filesystem::path eventFile(const std::filesystem::path& checkFolder) {
    return checkFolder / "events.jsonl";
}
inline std::filesystem::path traceFile(const std::filesystem::path& checkFolder) { return checkFolder / "calls.txt"; }

}  // namespace importhost::validate
