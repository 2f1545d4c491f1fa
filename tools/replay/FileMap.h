// Maps files of the log, which were on another machine, to the files given here.
#pragma once

#include "replay/LogReader.h"

#include <filesystem>
#include <functional>
#include <map>

namespace replay {

struct MappedFile {
    std::string logged;                                 // its path in the log, UTF-8
    std::optional<std::filesystem::path> file;          // empty if none was given
    std::size_t calls = 0;                              // number of calls that name it
};

class FileMap {
public:
    // A file is mapped to the logged path with which it shares the longest end, ignoring letter case: at least the file
    // name. A single file for a log of one file always matches. Of two equally good files the first is used.
    FileMap(const RecordedLog& log, const std::vector<std::filesystem::path>& files);

    const std::vector<MappedFile>& entries() const { return m_entries; }        // in the order of the log
    const std::vector<std::filesystem::path>& unused() const { return m_unused; }

    const MappedFile* find(std::string_view loggedPath) const;                  // null: not in the log

private:
    void collect(const RecordedLog& log);
    void assign(const std::vector<std::filesystem::path>& files);

    std::vector<MappedFile> m_entries;
    std::map<std::string, std::size_t, std::less<>> m_positions;        // index in the entries, by logged path
    std::vector<std::filesystem::path> m_unused;
};

// The last part of a path of any system.
std::string_view fileNameOf(std::string_view path);

}  // namespace replay
