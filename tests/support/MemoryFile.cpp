#include "support/MemoryFile.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace fileio {

namespace {

bool sharesWithReaders(std::uint32_t mode) {
    return (mode & kOpenShareRead) && !(mode & kOpenWrite);
}

}  // namespace

void FileBytes::resize(std::uint64_t size) {
    m_size = size;
    m_pieces.erase(m_pieces.lower_bound(size), m_pieces.end());
    for (auto& [position, piece] : m_pieces) {
        piece.resize(static_cast<std::size_t>(std::min<std::uint64_t>(piece.size(), size - position)));
    }
}

void FileBytes::put(std::uint64_t position, const std::vector<std::uint8_t>& bytes) {
    const std::uint64_t end = position + bytes.size();
    m_size = std::max(m_size, end);
    auto piece = m_pieces.upper_bound(position);
    if (piece == m_pieces.begin() || std::prev(piece)->first + std::prev(piece)->second.size() < position) {
        piece = m_pieces.try_emplace(piece, position);
    } else {
        --piece;
    }
    auto& [start, grown] = *piece;
    grown.resize(std::max(grown.size(), static_cast<std::size_t>(end - start)));
    for (auto next = std::next(piece); next != m_pieces.end() && next->first <= end; next = m_pieces.erase(next)) {
        const auto covered = static_cast<std::size_t>(start + grown.size() - next->first);
        if (covered < next->second.size()) {
            grown.insert(grown.end(), next->second.begin() + static_cast<std::ptrdiff_t>(covered), next->second.end());
        }
    }
    std::copy(bytes.begin(), bytes.end(), grown.begin() + static_cast<std::ptrdiff_t>(position - start));
}

std::size_t FileBytes::read(std::uint64_t position, std::size_t count, std::uint8_t* out) const {
    if (count == 0 || position >= m_size) {     // `out` may then be null
        return 0;
    }
    const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_size - position));
    std::memset(out, 0, part);
    auto piece = m_pieces.upper_bound(position);
    if (piece != m_pieces.begin()) {
        --piece;
    }
    for (; piece != m_pieces.end() && piece->first < position + part; ++piece) {
        const auto& [start, bytes] = *piece;
        const std::uint64_t first = std::max(start, position);
        const std::uint64_t last = std::min(start + bytes.size(), position + part);
        if (first < last) {
            std::copy_n(bytes.data() + (first - start), last - first, out + (first - position));
        }
    }
    return part;
}

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

MemoryFile::MemoryFile(const std::vector<std::uint8_t>& bytes)
    : m_entry(std::make_shared<MemoryDisk::Entry>()), m_mode(kOpenRead | kOpenShareRead) {
    m_entry->bytes.put(0, bytes);
    m_entry->sharingReaders = 1;
}

MemoryFile::MemoryFile(std::int64_t size) : MemoryFile(std::vector<std::uint8_t>()) {
    m_entry->bytes.resize(static_cast<std::uint64_t>(size));
}

void MemoryFile::put(std::uint64_t position, const std::vector<std::uint8_t>& bytes) {
    m_entry->bytes.put(position, bytes);
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
        entry->bytes.resize(0);
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
    if (!m_entry || !(m_mode & kOpenRead)) {
        return 0;
    }
    const std::size_t part =
        m_entry->bytes.read(m_position, static_cast<std::uint32_t>(count), static_cast<std::uint8_t*>(buffer));
    m_position += part;
    return part;
}

std::uint64_t MemoryFile::write(const void* buffer, std::uint64_t count) {
    if (!m_entry || !(m_mode & kOpenWrite)) {
        return 0;
    }
    const auto part = static_cast<std::uint32_t>(count);
    const auto* bytes = static_cast<const std::uint8_t*>(buffer);
    if (part > 0) {
        m_entry->bytes.put(m_position, {bytes, bytes + part});
    }
    m_position += part;
    return part;
}

}  // namespace fileio
