// The bytes of a file with a layout of records and texts, read with every position checked.
#pragma once

#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

class FileBytes {
public:
    // Reads the whole file. Throws std::runtime_error when it cannot be read.
    explicit FileBytes(const std::filesystem::path& path) : m_name(toUtf8(path)) {
        std::ifstream in(path, std::ios::binary);
        m_bytes.assign(std::istreambuf_iterator<char>(in), {});
        if (!in) {
            throw std::runtime_error("'" + m_name + "' cannot be read.");
        }
    }

    // The next three throw std::runtime_error for a position that the file does not have.

    template <class Record>
    Record at(std::uint64_t offset) const {
        Record record;
        expect(offset, sizeof(record));
        std::memcpy(&record, m_bytes.data() + offset, sizeof(record));
        return record;
    }

    std::string text(std::uint64_t offset) const {
        expect(offset, 1);
        const auto start = m_bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        return {start, std::find(start, m_bytes.end(), '\0')};
    }

    std::vector<std::uint8_t> part(std::uint64_t offset, std::uint64_t size) const {
        expect(offset, size);
        const auto start = m_bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        return {start, start + static_cast<std::ptrdiff_t>(size)};
    }

    bool contains(std::string_view text) const {
        return std::search(m_bytes.begin(), m_bytes.end(), text.begin(), text.end()) != m_bytes.end();
    }

    [[noreturn]] void fail(const std::string& why) const { throw std::runtime_error("'" + m_name + "' " + why + "."); }

private:
    void expect(std::uint64_t offset, std::uint64_t size) const {
        if (offset > m_bytes.size() || size > m_bytes.size() - offset) {
            fail("is damaged: it points behind its end");
        }
    }

    std::string m_name;
    std::vector<char> m_bytes;
};

}  // namespace hostkit
