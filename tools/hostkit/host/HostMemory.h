// The host's memory functions: exact sizes, guard bytes, and a count of what is still alive.
// Safe on any thread. Misuse (an unknown block, damaged guards) is remembered as a sentence, never thrown.
#pragma once

#include "hostkit/host/GuardedBlock.h"
#include "sdk/SdkTypes.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace hostkit {

class HostMemory {
public:
    explicit HostMemory(std::function<void(std::string)> report) : m_report(std::move(report)) {}

    // `fill` is the content of the new block. Contents of newPtr are undefined in a real host, so 0xCD there.
    char* allocate(std::size_t size, std::uint8_t fill);
    bool resize(char*& block, std::size_t newSize);
    std::size_t sizeOf(char* block) const;              // 0 and a report for an unknown block
    void free(char* block);                             // null is allowed

    // A handle is the address of a block's address.
    char** allocateHandle(std::size_t size, std::uint8_t fill);
    void freeHandle(char** handle);

    std::size_t aliveBlocks() const;
    std::vector<std::string> problems() const;          // blocks never freed, damaged guards

private:
    mutable std::mutex m_mutex;
    std::function<void(std::string)> m_report;
    std::map<char*, GuardedBlock> m_blocks;
    std::map<char**, std::unique_ptr<char*>> m_handles;
};

}  // namespace hostkit
