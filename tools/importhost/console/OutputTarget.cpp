#include "importhost/console/OutputTarget.h"

#include "hostkit/system/Text.h"
#include "importhost/console/Program.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace importhost {

namespace {

bool isSame(char left, char right) {
    return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

// Also true for an empty file.
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

OutputTarget::OutputTarget(std::string path, std::string_view beginning,
                           const std::vector<std::filesystem::path>& inputs)
    : m_path(std::move(path)), m_target(hostkit::pathFromUtf8(m_path)) {
    if (!isWanted()) {
        return;
    }
    if (isOneOf(m_target, inputs)) {
        throw UsageError("'" + m_path + "' is named twice: it would be overwritten.");
    }
    const bool isThere = std::filesystem::exists(m_target);
    if (isThere && !begins(m_target, beginning)) {
        throw UsageError("'" + m_path + "' is there and is no report: it is not overwritten.");
    }
    if (!std::ofstream(m_target, std::ios::binary | std::ios::app)) {
        throw UsageError("'" + m_path + "' cannot be written.");
    }
    m_isNew = !isThere;
}

OutputTarget::~OutputTarget() {
    if (m_isNew) {
        std::error_code ignored;
        std::filesystem::remove(m_target, ignored);
    }
}

void OutputTarget::write(const std::string& text) {
    if (!isWanted()) {
        return;
    }
    m_isNew = false;
    std::ofstream out(m_target, std::ios::binary);
    out << text;
    if (!out.flush()) {
        throw std::runtime_error("'" + m_path + "' cannot be written.");
    }
    std::cout << "Written: " << m_path << "\n";
}

}  // namespace importhost
