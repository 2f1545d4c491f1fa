// A temporary file that takes what a child process writes. Inner header of ChildProcess.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace hostkit {

class OutputFile {
public:
    OutputFile() : m_path(unusedPath()) {}
    ~OutputFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    const std::filesystem::path& path() const { return m_path; }

    std::string content() const {
        std::ifstream in(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    static std::filesystem::path unusedPath() {
        static std::atomic<unsigned> counter = 0;
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        std::filesystem::path path;
        do {
            path = std::filesystem::temp_directory_path() /
                   ("quorvane-output-" + std::to_string(now) + "-" + std::to_string(counter++));
        } while (std::filesystem::exists(path));
        return path;
    }
    std::filesystem::path m_path;
};

}  // namespace hostkit
