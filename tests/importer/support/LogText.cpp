#include "LogText.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/plugin/PluginLog.h"

#include <algorithm>
#include <regex>
#include <system_error>

namespace {

constexpr std::string_view kApplicationLine = "Application: ";

std::vector<std::filesystem::path> allLogFiles() {
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(hostkit::pluginLogFolder(), missing)) {
        if (entry.path().extension() == ".log") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The second line of a log names the program.
bool isOurs(const std::filesystem::path& file) {
    const Lines lines = hostkit::readLogLines(file);
    return lines.size() >= 2 && lines[1].find(kApplicationLine) != std::string::npos &&
           lines[1].find("tests_importer") != std::string::npos;
}

std::string withPointerReplaced(const std::string& line, const std::string& label) {
    static const std::regex pointer("(0x)?[0-9A-Fa-f]+|\\(nil\\)");
    const std::size_t begin = line.find(label);
    if (begin == std::string::npos) {
        return line;
    }
    const std::string value = line.substr(begin + label.size());
    if (!std::regex_match(value, pointer)) {
        return line;
    }
    const bool isNull = value == "(nil)" || value.find_first_not_of("0x") == std::string::npos;
    return line.substr(0, begin + label.size()) + (isNull ? "<null>" : "<pointer>");
}

}  // namespace

ProgramLog::ProgramLog() : m_before(allLogFiles()) {}

ProgramLog::~ProgramLog() {
    std::error_code ignored;
    for (const auto& file : files()) {
        std::filesystem::remove(file, ignored);
    }
}

std::vector<std::filesystem::path> ProgramLog::files() const {
    std::vector<std::filesystem::path> ours;
    for (const auto& file : allLogFiles()) {
        if (!std::binary_search(m_before.begin(), m_before.end(), file) && isOurs(file)) {
            ours.push_back(file);
        }
    }
    return ours;
}

Lines ProgramLog::messages() const {
    Lines all;
    for (const auto& file : files()) {
        for (const std::string& line : hostkit::readLogLines(file)) {
            all.emplace_back(hostkit::withoutLogPrefix(line));
        }
    }
    return all;
}

std::string normalised(std::string line, const std::string& folder) {
    for (std::size_t at = line.find(folder); at != std::string::npos; at = line.find(folder, at)) {
        line.replace(at, folder.size() + 1, "<folder>/");
    }
    if (line.starts_with(kApplicationLine)) {
        return std::string(kApplicationLine) + "<program>";
    }
    return withPointerReplaced(withPointerReplaced(line, "ptr: "), "outFrame: ");
}

bool contains(const Lines& lines, const std::string& line) {
    return countOf(lines, line) > 0;
}

std::size_t countOf(const Lines& lines, const std::string& line) {
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
}
