#include "replay/FileMap.h"

#include "hostkit/system/Text.h"
#include "replay/Arguments.h"

#include <algorithm>
#include <cctype>

namespace replay {

namespace {

bool isSeparator(char c) { return c == '/' || c == '\\'; }

bool sameLetter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameLetter);
}

// Number of parts that two paths have in common, counted from the file name.
int commonParts(std::string_view a, std::string_view b) {
    int count = 0;
    while (!a.empty() && !b.empty()) {
        const std::string_view nameA = fileNameOf(a);
        const std::string_view nameB = fileNameOf(b);
        if (nameA.empty() || !sameName(nameA, nameB)) {
            break;
        }
        ++count;
        a.remove_suffix(std::min(a.size(), nameA.size() + 1));
        b.remove_suffix(std::min(b.size(), nameB.size() + 1));
    }
    return count;
}

}  // namespace

std::string_view fileNameOf(std::string_view path) {
    const auto end = std::find_if(path.rbegin(), path.rend(), isSeparator);
    return path.substr(static_cast<std::size_t>(path.rend() - end));
}

FileMap::FileMap(const RecordedLog& log, const std::vector<std::filesystem::path>& files) {
    collect(log);
    assign(files);
}

void FileMap::collect(const RecordedLog& log) {
    for (const LoggedCall& call : log.calls) {
        if (const auto path = argumentsOf(call).path) {
            const auto [position, isNew] = m_positions.try_emplace(*path, m_entries.size());
            if (isNew) {
                m_entries.push_back({*path, std::nullopt, 0});
            }
            ++m_entries[position->second].calls;
        }
    }
}

void FileMap::assign(const std::vector<std::filesystem::path>& files) {
    const bool anyNameWillDo = m_entries.size() == 1 && files.size() == 1;
    std::vector<bool> used(files.size(), false);
    for (MappedFile& entry : m_entries) {
        int best = anyNameWillDo ? -1 : 0;
        std::optional<std::size_t> chosen;
        for (std::size_t i = 0; i < files.size(); ++i) {
            const int common = commonParts(entry.logged, hostkit::toUtf8(files[i]));
            if (common > best) {
                best = common;
                chosen = i;
            }
        }
        if (chosen) {
            entry.file = files[*chosen];
            used[*chosen] = true;
        }
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (!used[i]) {
            m_unused.push_back(files[i]);
        }
    }
}

const MappedFile* FileMap::find(std::string_view loggedPath) const {
    const auto found = m_positions.find(loggedPath);
    return found == m_positions.end() ? nullptr : &m_entries[found->second];
}

}  // namespace replay
