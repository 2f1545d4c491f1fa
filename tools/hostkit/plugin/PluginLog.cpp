#include "hostkit/plugin/PluginLog.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace hostkit {

namespace {

constexpr std::string_view kLogName = "quorvane_pr_importer_";

bool isLogFile(const std::filesystem::path& path) {
    return path.extension() == ".log" && toUtf8(path.filename()).starts_with(kLogName);
}

std::vector<std::filesystem::path> logFiles() {
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(pluginLogFolder(), missing)) {
        if (isLogFile(entry.path())) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Takes "[...] " off the front, if it is there.
bool dropBracket(std::string_view& line) {
    const std::size_t end = line.find("] ");
    if (!line.starts_with('[') || end == std::string_view::npos) {
        return false;
    }
    line.remove_prefix(end + 2);
    return true;
}

}  // namespace

PluginLog::PluginLog() : m_before(logFiles()) {}

std::vector<std::filesystem::path> PluginLog::newFiles() const {
    const std::vector<std::filesystem::path> now = logFiles();
    std::vector<std::filesystem::path> added;
    std::set_difference(now.begin(), now.end(), m_before.begin(), m_before.end(), std::back_inserter(added));
    return added;
}

std::vector<std::string> PluginLog::lines() const {
    std::vector<std::string> all;
    for (const std::filesystem::path& file : newFiles()) {
        const std::vector<std::string> lines = readLogLines(file);
        all.insert(all.end(), lines.begin(), lines.end());
    }
    return all;
}

std::vector<std::string> PluginLog::messages() const {
    std::vector<std::string> all = lines();
    for (std::string& line : all) {
        line = std::string(withoutLogPrefix(line));
    }
    return all;
}

std::vector<std::string> readLogLines(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        throw std::runtime_error("The log '" + toUtf8(file) + "' cannot be read.");
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

std::string_view withoutLogPrefix(std::string_view line) {
    std::string_view rest = line;
    return dropBracket(rest) && dropBracket(rest) ? rest : line;
}

}  // namespace hostkit
