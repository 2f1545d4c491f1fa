#include "importhost/validate/checks/stage/OwnLogs.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <exception>

namespace importhost::validate {

namespace {

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isOwn(const std::filesystem::path& file) {
    try {
        const std::vector<std::string> lines = hostkit::readLogLines(file);
        return std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
            return namesThisProgram(std::string(hostkit::withoutLogPrefix(line)));
        });
    } catch (const std::exception&) {
        return false;       // gone again, or another program's
    }
}

}  // namespace

bool namesThisProgram(const std::string& message) {
    const std::string program = hostkit::toUtf8(hostkit::PluginLibrary::programPath());
    return message == "Application: " + program || (!isAscii(program) && message.starts_with("Application: "));
}

std::vector<std::filesystem::path> ownLogs(const hostkit::PluginLog& log) {
    std::vector<std::filesystem::path> files = log.newFiles();
    std::erase_if(files, [](const std::filesystem::path& file) { return !isOwn(file); });
    return files;
}

void removeFiles(const std::vector<std::filesystem::path>& files) {
    for (const std::filesystem::path& file : files) {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
}

}  // namespace importhost::validate
