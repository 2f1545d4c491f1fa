#include "support/MemoryFile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fileio {

namespace {

bool sharesWithReaders(std::uint32_t mode) {
    return (mode & kOpenShareRead) && !(mode & kOpenWrite);
}

}  // namespace

std::shared_ptr<MemoryDisk::Entry> MemoryDisk::find(const std::string& path) const {
    const auto found = m_entries.find(path);
    return found == m_entries.end() ? nullptr : found->second;
}

std::shared_ptr<MemoryDisk::Entry> MemoryDisk::findOrAdd(const std::string& path) {
    std::shared_ptr<Entry>& entry = m_entries[path];
    if (!entry) {
        entry = std::make_shared<Entry>();
    }
    return entry;
}

MemoryFile::MemoryFile(std::vector<std::uint8_t> bytes)
    : m_entry(std::make_shared<MemoryDisk::Entry>()), m_mode(kOpenRead | kOpenShareRead) {
    m_entry->bytes = std::move(bytes);
    m_entry->sharingReaders = 1;
}

MemoryFile::~MemoryFile() {
    MemoryFile::close();
}

bool MemoryFile::open(const char* pathUtf8, std::uint32_t mode) {
    close();
    if (!m_disk || !(mode & (kOpenRead | kOpenWrite))) {
        return false;
    }
    auto entry = (mode & kOpenWrite) ? m_disk->findOrAdd(pathUtf8) : m_disk->find(pathUtf8);
    if (!entry || entry->isHeldAlone || (entry->sharingReaders > 0 && !sharesWithReaders(mode))) {
        return false;
    }
    if (sharesWithReaders(mode)) {
        ++entry->sharingReaders;
    } else {
        entry->isHeldAlone = true;
    }
    if (mode & kOpenWrite) {
        entry->bytes.clear();
    }
    m_entry = std::move(entry);
    m_mode = mode;
    m_position = 0;
    return true;
}

void MemoryFile::close() {
    if (!m_entry) {
        return;
    }
    if (sharesWithReaders(m_mode)) {
        --m_entry->sharingReaders;
    } else {
        m_entry->isHeldAlone = false;
    }
    m_entry.reset();
}

std::int64_t MemoryFile::size() {
    return m_entry ? static_cast<std::int64_t>(m_entry->bytes.size()) : 0;
}

std::int64_t MemoryFile::tell() {
    return m_entry ? static_cast<std::int64_t>(m_position) : 0;
}

bool MemoryFile::seek(std::int64_t pos) {
    if (!m_entry || pos < 0) {
        return false;
    }
    m_position = static_cast<std::uint64_t>(pos);
    return true;
}

std::uint64_t MemoryFile::read(void* buffer, std::uint64_t count) {
    if (!m_entry || !(m_mode & kOpenRead) || count == 0 || m_position >= m_entry->bytes.size()) {
        return 0;
    }
    const std::uint64_t part =
        std::min<std::uint64_t>(static_cast<std::uint32_t>(count), m_entry->bytes.size() - m_position);
    std::memcpy(buffer, m_entry->bytes.data() + m_position, static_cast<std::size_t>(part));
    m_position += part;
    return part;
}

std::uint64_t MemoryFile::write(const void* buffer, std::uint64_t count) {
    if (!m_entry || !(m_mode & kOpenWrite)) {
        return 0;
    }
    const auto part = static_cast<std::uint32_t>(count);
    const auto end = static_cast<std::size_t>(m_position + part);
    if (part > 0 && m_entry->bytes.size() < end) {
        m_entry->bytes.resize(end);
    }
    if (part > 0) {
        std::memcpy(m_entry->bytes.data() + m_position, buffer, part);
    }
    m_position += part;
    return part;
}

}  // namespace fileio
