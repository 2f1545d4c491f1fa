#include "support/FaultyDisk.h"

#include "fileio/File.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

constexpr std::uint64_t kBriefFile = 2048;

bool touches(std::uint64_t position, std::uint64_t count, std::uint64_t from, std::uint64_t fromCount) {
    return position < from ? from - position < count : position - from < fromCount;
}

// A position in the file or slightly past its end, more often near the start, where the headers are.
std::uint64_t somewhere(Script& script, std::uint64_t fileSize) {
    const std::uint64_t value = script.next16();
    return (value & 0x8000) != 0 ? value & 0x7FFF : value * (fileSize + 16) >> 15;
}

}  // namespace

DiskFaults readFaults(Script& script, std::uint64_t fileSize) {
    DiskFaults faults;
    const unsigned kinds = script.next8();
    if ((kinds & 1) != 0) {
        faults.largestRead = std::uint64_t{1} << script.below(17);
    }
    if ((kinds & 2) != 0) {
        faults.brokenFrom = somewhere(script, fileSize);
        faults.brokenCount = script.next8() + 1u;
    }
    if ((kinds & 4) != 0) {
        faults.refusedFrom = somewhere(script, fileSize);
        faults.refusedCount = script.next8() + 1u;
    }
    if ((kinds & 8) != 0) {
        // The stated size limits how often bytes may be read again, so a file may only exaggerate a little.
        const std::uint8_t amount = script.next8();
        const std::int64_t growth = std::int64_t{1} << (amount & 0x3F) % (fileSize <= kBriefFile ? 62 : 20);
        faults.claimedGrowth = (amount & 0x80) != 0 ? -growth : growth;
    }
    if ((kinds & 16) != 0) {
        faults.readsUntilCut = script.next8();
        faults.cutAt = somewhere(script, fileSize);
    }
    return faults;
}

FaultyDisk& FaultyDisk::instance() {
    static FaultyDisk disk;
    return disk;
}

void FaultyDisk::put(const std::string& name, ByteView bytes) {
    const std::lock_guard lock(m_mutex);
    std::shared_ptr<Entry>& entry = m_entries[name];
    if (!entry) {
        entry = std::make_shared<Entry>();
    }
    // A new block, not the old one: then the end of the bytes is the end of the memory, and an overrun is detected.
    Bytes(bytes.begin(), bytes.end()).swap(entry->bytes);
    entry->reads = 0;
}

void FaultyDisk::cut(const std::string& name, std::uint64_t size) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(name);
    if (found != m_entries.end() && size < found->second->bytes.size()) {
        found->second->bytes.resize(static_cast<std::size_t>(size));
    }
}

void FaultyDisk::remove(const std::string& name) {
    const std::lock_guard lock(m_mutex);
    m_entries.erase(name);
}

void FaultyDisk::setFaults(const DiskFaults& faults) {
    const std::lock_guard lock(m_mutex);
    m_faults = faults;
}

std::size_t FaultyDisk::openFiles() const {
    const std::lock_guard lock(m_mutex);
    return m_open.size();
}

int FaultyDisk::open(const std::string& name, std::uint32_t mode) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(name);
    if (found == m_entries.end() || (mode & (fileio::kOpenRead | fileio::kOpenWrite)) == 0) {
        return -1;
    }
    const std::shared_ptr<Entry>& entry = found->second;
    if ((mode & fileio::kOpenWrite) != 0) {
        const auto isSame = [&entry](const auto& file) { return file.second.entry == entry; };
        if (std::any_of(m_open.begin(), m_open.end(), isSame)) {
            return -1;
        }
        entry->bytes.clear();
    }
    const int handle = m_nextHandle++;
    m_open[handle] = {entry, 0, (mode & fileio::kOpenRead) != 0};
    return handle;
}

void FaultyDisk::close(int handle) {
    const std::lock_guard lock(m_mutex);
    m_open.erase(handle);
}

std::int64_t FaultyDisk::size(int handle) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_open.find(handle);
    if (found == m_open.end()) {
        return 0;
    }
    const auto size = static_cast<std::int64_t>(found->second.entry->bytes.size());
    return std::max<std::int64_t>(size + m_faults.claimedGrowth, 0);
}

std::int64_t FaultyDisk::tell(int handle) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_open.find(handle);
    return found == m_open.end() ? 0 : static_cast<std::int64_t>(found->second.position);
}

bool FaultyDisk::seek(int handle, std::int64_t position) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_open.find(handle);
    if (found == m_open.end() || position < 0 ||
        touches(static_cast<std::uint64_t>(position), 1, m_faults.refusedFrom, m_faults.refusedCount)) {
        return false;
    }
    found->second.position = static_cast<std::uint64_t>(position);
    return true;
}

std::uint64_t FaultyDisk::read(int handle, void* buffer, std::uint64_t count) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_open.find(handle);
    if (found == m_open.end() || !found->second.readable) {
        return 0;
    }
    OpenFile& file = found->second;
    Entry& entry = *file.entry;
    if (entry.reads++ >= m_faults.readsUntilCut && m_faults.cutAt < entry.bytes.size()) {
        entry.bytes.resize(static_cast<std::size_t>(m_faults.cutAt));
    }
    const std::uint64_t size = entry.bytes.size();
    const std::uint64_t wanted = static_cast<std::uint32_t>(count);
    if (file.position >= size || touches(file.position, wanted, m_faults.brokenFrom, m_faults.brokenCount)) {
        return 0;
    }
    const std::uint64_t part = std::min({wanted, size - file.position, m_faults.largestRead});
    if (part > 0) {
        std::memcpy(buffer, entry.bytes.data() + file.position, static_cast<std::size_t>(part));
        file.position += part;
    }
    return part;
}

}  // namespace fuzz
