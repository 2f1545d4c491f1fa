#include "importhost/validate/OutputTarget.h"

#include "hostkit/Text.h"
#include "importhost/Command.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace importhost::validate {

namespace {

bool isSame(char left, char right) {
    return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

// Also true for a file without any content.
bool begins(const std::filesystem::path& path, std::string_view beginning) {
    std::ifstream in(path, std::ios::binary);
    std::string start(beginning.size(), '\0');
    in.read(start.data(), static_cast<std::streamsize>(start.size()));
    return in.gcount() == 0 || std::equal(start.begin(), start.end(), beginning.begin(), beginning.end(), isSame);
}

bool isOneOf(const std::filesystem::path& path, const std::vector<std::filesystem::path>& inputs) {
    return std::any_of(inputs.begin(), inputs.end(), [&path](const std::filesystem::path& input) {
        std::error_code ignored;
        return path == input || std::filesystem::equivalent(path, input, ignored);
    });
}

}  // namespace

void expectOutput(const std::string& path, std::string_view beginning,
                  const std::vector<std::filesystem::path>& inputs) {
    if (path.empty()) {
        return;
    }
    const std::filesystem::path target = hostkit::pathFromUtf8(path);
    if (isOneOf(target, inputs)) {
        throw UsageError("'" + path + "' is named twice: it would be overwritten.");
    }
    if (std::filesystem::exists(target) && !begins(target, beginning)) {
        throw UsageError("'" + path + "' is there and is no report: it is not overwritten.");
    }
    if (!std::ofstream(target, std::ios::binary | std::ios::app)) {
        throw UsageError("'" + path + "' cannot be written.");
    }
}

}  // namespace importhost::validate
