#include "importhost/validate/framework/CallTrace.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace importhost::validate {

namespace {

// The file is a ring of slots: number of the line, a blank, its text, blanks, a line end.
constexpr std::size_t kSlotBytes = 256;

std::string slot(std::uint64_t number, const std::string& line) {
    std::string text = std::to_string(number) + " " + line;
    std::replace(text.begin(), text.end(), '\n', ' ');
    text.resize(kSlotBytes - 1, ' ');
    return text + "\n";
}

}  // namespace

CallTrace::CallTrace(const std::filesystem::path& path) : m_out(path, std::ios::binary) {
    if (!m_out) {
        throw std::runtime_error("'" + hostkit::toUtf8(path) + "' cannot be written.");
    }
}

void CallTrace::add(const std::string& line) {
    const std::lock_guard lock(m_mutex);
    m_out.seekp(static_cast<std::streamoff>(m_count % kLines * kSlotBytes));
    m_out << slot(m_count, line) << std::flush;
    ++m_count;
    m_latest.push_back(line);
    if (m_latest.size() > kLines) {
        m_latest.pop_front();
    }
}

std::vector<std::string> CallTrace::latest() const {
    const std::lock_guard lock(m_mutex);
    return {m_latest.begin(), m_latest.end()};
}

std::vector<std::string> readCallTrace(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<std::pair<std::uint64_t, std::string>> numbered;
    for (std::string line; std::getline(in, line);) {
        std::uint64_t number = 0;
        std::istringstream words(line);
        if (words >> number && words.get() == ' ') {
            std::string text;
            std::getline(words, text);
            text.erase(text.find_last_not_of(' ') + 1);
            numbered.emplace_back(number, text);
        }
    }
    std::sort(numbered.begin(), numbered.end());
    std::vector<std::string> lines;
    for (auto& [number, text] : numbered) {
        lines.push_back(std::move(text));
    }
    return lines;
}

}  // namespace importhost::validate
