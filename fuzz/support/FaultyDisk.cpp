#include "support/FaultyDisk.h"

#include <utility>

namespace fuzz {

namespace {

constexpr std::uint64_t kBriefFile = 2048;

// A position in the file or slightly past its end, more often near the start, where the headers are.
std::uint64_t somewhere(Script& script, std::uint64_t fileSize) {
    const std::uint64_t value = script.next16();
    return (value & 0x8000) != 0 ? value & 0x7FFF : value * (fileSize + 16) >> 15;
}

}  // namespace

fileio::FileFaults readFaults(Script& script, std::uint64_t fileSize) {
    fileio::FileFaults faults;
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

struct FaultyDisk::OpenFile {
    OpenFile(fileio::MemoryDisk& disk, const fileio::FileFaults& faults) : bytes(disk), file(bytes, faults) {}

    fileio::MemoryFile bytes;
    fileio::FaultFile file;
};

FaultyDisk::FaultyDisk() = default;
FaultyDisk::~FaultyDisk() = default;

FaultyDisk& FaultyDisk::instance() {
    static FaultyDisk disk;
    return disk;
}

void FaultyDisk::put(const std::string& name, ByteView bytes) {
    const std::lock_guard lock(m_mutex);
    fileio::FileBytes& file = m_disk.findOrAdd(name)->bytes;
    file.resize(0);
    file.put(0, {bytes.begin(), bytes.end()});
}

void FaultyDisk::cut(const std::string& name, std::uint64_t size) {
    const std::lock_guard lock(m_mutex);
    const auto entry = m_disk.find(name);
    if (entry && size < entry->bytes.size()) {
        entry->bytes.resize(size);
    }
}

void FaultyDisk::remove(const std::string& name) {
    const std::lock_guard lock(m_mutex);
    m_disk.remove(name);
}

void FaultyDisk::setFaults(const fileio::FileFaults& faults) {
    const std::lock_guard lock(m_mutex);
    m_faults = faults;
}

std::size_t FaultyDisk::openFiles() const {
    const std::lock_guard lock(m_mutex);
    return m_open.size();
}

int FaultyDisk::open(const std::string& name, std::uint32_t mode) {
    const std::lock_guard lock(m_mutex);
    auto file = std::make_unique<OpenFile>(m_disk, m_faults);
    if (!m_disk.find(name) || !file->file.open(name.c_str(), mode)) {
        return -1;
    }
    m_open[m_nextHandle] = std::move(file);
    return m_nextHandle++;
}

void FaultyDisk::close(int handle) {
    const std::lock_guard lock(m_mutex);
    m_open.erase(handle);
}

// Null for a handle that is none.
fileio::File* FaultyDisk::find(int handle) {
    const auto found = m_open.find(handle);
    return found == m_open.end() ? nullptr : &found->second->file;
}

std::int64_t FaultyDisk::size(int handle) {
    const std::lock_guard lock(m_mutex);
    fileio::File* file = find(handle);
    return file ? file->size() : 0;
}

std::int64_t FaultyDisk::tell(int handle) {
    const std::lock_guard lock(m_mutex);
    fileio::File* file = find(handle);
    return file ? file->tell() : 0;
}

bool FaultyDisk::seek(int handle, std::int64_t position) {
    const std::lock_guard lock(m_mutex);
    fileio::File* file = find(handle);
    return file && file->seek(position);
}

std::uint64_t FaultyDisk::read(int handle, void* buffer, std::uint64_t count) {
    const std::lock_guard lock(m_mutex);
    fileio::File* file = find(handle);
    return file ? file->read(buffer, count) : 0;
}

}  // namespace fuzz
