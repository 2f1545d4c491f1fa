#include "avirepair/NewFile.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace avirepair {

namespace {

namespace fs = std::filesystem;

bool isSame(const fs::path& left, const fs::path& right) {
    std::error_code ignored;
    return left == right || fs::equivalent(left, right, ignored);
}

void expectUsable(const fs::path& path, const std::vector<fs::path>& inputs, bool overwrites) {
    std::error_code ignored;
    for (const fs::path& input : inputs) {
        if (isSame(path, input)) {
            throw std::runtime_error("the output is the input: it is never overwritten");
        }
    }
    if (fs::is_directory(path, ignored)) {
        throw std::runtime_error("the output is a folder");
    }
    if (!overwrites && fs::exists(fs::symlink_status(path, ignored))) {
        throw std::runtime_error("the output exists; --force overwrites it");
    }
}

void expectRoom(const fs::path& folder, std::uint64_t bytes) {
    std::error_code error;
    const fs::space_info space = fs::space(folder, error);
    if (!error && space.available < bytes) {
        throw std::runtime_error("the disk has " + std::to_string(space.available >> 20) + " MiB left, and " +
                                 std::to_string((bytes >> 20) + 1) + " MiB are needed");
    }
}

}  // namespace

NewFile::NewFile(fs::path path, const std::vector<fs::path>& inputs, bool overwrites, std::uint64_t bytes)
    : m_path(std::move(path)), m_part(m_path) {
    expectUsable(m_path, inputs, overwrites);
    m_part += ".part";
    if (std::error_code ignored; fs::exists(fs::symlink_status(m_part, ignored))) {
        throw std::runtime_error("the output with .part at its end is needed while writing, and exists");
    }
    expectRoom(m_path.has_parent_path() ? m_path.parent_path() : fs::path("."), bytes);
    m_sink.emplace(m_part);
}

NewFile::~NewFile() {
    if (m_sink) {
        m_sink.reset();         // an open file cannot be removed everywhere
        std::error_code ignored;
        fs::remove(m_part, ignored);
    }
}

void NewFile::finish() {
    m_sink->close();
    std::error_code error;
    fs::rename(m_part, m_path, error);
    if (error) {
        throw std::runtime_error("the finished file cannot be renamed: " + error.message());
    }
    m_sink.reset();
}

}  // namespace avirepair
