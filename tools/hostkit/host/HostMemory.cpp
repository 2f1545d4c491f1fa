#include "hostkit/host/HostMemory.h"

#include <algorithm>

namespace hostkit {

char* HostMemory::allocate(std::size_t size, std::uint8_t fill) {
    GuardedBlock block(size, fill);
    char* address = reinterpret_cast<char*>(block.data());
    const std::lock_guard lock(m_mutex);
    m_blocks.emplace(address, std::move(block));
    return address;
}

bool HostMemory::resize(char*& block, std::size_t newSize) {
    char* moved = allocate(newSize, 0xCD);
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_blocks.find(block);
        if (found != m_blocks.end()) {
            std::copy_n(found->second.data(), std::min(newSize, found->second.size()),
                        m_blocks.at(moved).data());
        }
    }
    free(block);
    block = moved;
    return true;
}

std::size_t HostMemory::sizeOf(char* block) const {
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_blocks.find(block);
        if (found != m_blocks.end()) {
            return found->second.size();
        }
    }
    m_report("The size of a block was asked for that the host never gave out.");
    return 0;
}

void HostMemory::free(char* block) {
    if (!block) {
        return;
    }
    std::string problem;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_blocks.find(block);
        if (found == m_blocks.end()) {
            problem = "A block was freed that the host never gave out, or twice.";
        } else {
            if (!found->second.guardsAreIntact()) {
                problem = "A block of " + std::to_string(found->second.size()) + " bytes was overrun.";
            }
            m_blocks.erase(found);
        }
    }
    if (!problem.empty()) {
        m_report(problem);
    }
}

char** HostMemory::allocateHandle(std::size_t size, std::uint8_t fill) {
    auto slot = std::make_unique<char*>(allocate(size, fill));
    char** handle = slot.get();
    const std::lock_guard lock(m_mutex);
    m_handles.emplace(handle, std::move(slot));
    return handle;
}

void HostMemory::freeHandle(char** handle) {
    if (!handle) {
        return;
    }
    std::unique_ptr<char*> slot;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_handles.find(handle);
        if (found != m_handles.end()) {
            slot = std::move(found->second);
            m_handles.erase(found);
        }
    }
    if (slot) {
        free(*slot);
    } else {
        m_report("A handle was freed that the host never gave out, or twice.");
    }
}

std::size_t HostMemory::aliveBlocks() const {
    const std::lock_guard lock(m_mutex);
    return m_blocks.size();
}

std::vector<std::string> HostMemory::problems() const {
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> sentences;
    for (const auto& [address, block] : m_blocks) {
        sentences.push_back("A block of " + std::to_string(block.size()) + " bytes was never freed" +
                            (block.guardsAreIntact() ? "." : ", and it was overrun."));
    }
    return sentences;
}

}  // namespace hostkit
