#include "aviwriter/ByteSink.h"

#include <algorithm>
#include <stdexcept>

namespace aviwriter {

void MemorySink::write(std::uint64_t position, const Bytes& data) {
    const auto begin = static_cast<std::size_t>(position);
    m_bytes.resize(std::max(m_bytes.size(), begin + data.size()));
    overwrite(m_bytes, begin, data);
}

FileSink::FileSink(const std::filesystem::path& path) : m_file(path, std::ios::binary | std::ios::trunc) {
    if (!m_file) {
        throw std::runtime_error("cannot create the file");
    }
}

void FileSink::write(std::uint64_t position, const Bytes& data) {
    if (position != m_position) {   // avoid seeks that would flush the stream's buffer
        m_file.seekp(static_cast<std::streamoff>(position));
    }
    m_file.write(reinterpret_cast<const char*>(data.data()), static_cast<std::streamsize>(data.size()));
    if (!m_file) {
        throw std::runtime_error("writing the file failed");
    }
    m_position = position + data.size();
}

void FileSink::close() {
    m_file.close();
    if (!m_file) {
        throw std::runtime_error("writing the file failed");
    }
}

}  // namespace aviwriter
