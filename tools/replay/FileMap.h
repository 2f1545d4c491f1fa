// Which of the files given here stands for a file of the log, which lay on another machine.
#pragma once

#include "replay/LogReader.h"

#include <filesystem>
#include <functional>
#include <map>

namespace replay {

struct MappedFile {
    std::string logged;                                 // its path in the log, UTF-8
    std::optional<std::filesystem::path> file;          // none was given for it
    std::size_t calls = 0;                              // that name it
};

class FileMap {
public:
    // A file stands for the logged path that it shares most of its end with, letter case aside: the file name at
    // least. One file for a log of one file needs not even that. Where two files serve equally well, the first does.
    FileMap(const RecordedLog& log, const std::vector<std::filesystem::path>& files);

    const std::vector<MappedFile>& entries() const { return m_entries; }        // in the order of the log
    const std::vector<std::filesystem::path>& unused() const { return m_unused; }

    const MappedFile* find(std::string_view loggedPath) const;                  // null: not in the log

private:
    void collect(const RecordedLog& log);
    void assign(const std::vector<std::filesystem::path>& files);

    std::vector<MappedFile> m_entries;
    std::map<std::string, std::size_t, std::less<>> m_positions;        // in the entries, by logged path
    std::vector<std::filesystem::path> m_unused;
};

// The last part of a path of any system.
std::string_view fileNameOf(std::string_view path);

}  // namespace replay
