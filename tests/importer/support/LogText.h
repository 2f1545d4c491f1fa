// The plug-in's log without the parts that differ from run to run.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// The log files of this program that were written since construction. Other programs may write theirs to the same
// folder meanwhile.
class ProgramLog {
public:
    ProgramLog();
    ~ProgramLog();                      // removes the files
    ProgramLog(const ProgramLog&) = delete;
    ProgramLog& operator=(const ProgramLog&) = delete;

    // All lines so far, without times and threads.
    Lines messages() const;

private:
    std::vector<std::filesystem::path> files() const;

    std::vector<std::filesystem::path> m_before;
};

// Replaces each pointer by "<pointer>", or "<null>", `folder` with the separator after it by "<folder>/", and this
// program's path by "<program>".
std::string normalised(std::string line, const std::string& folder);

// Whether `lines` contain a line; and how often.
bool contains(const Lines& lines, const std::string& line);
std::size_t countOf(const Lines& lines, const std::string& line);
