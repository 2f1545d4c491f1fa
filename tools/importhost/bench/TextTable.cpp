#include "importhost/bench/TextTable.h"

#include <algorithm>

namespace importhost::bench {

std::string TextTable::text() const {
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : m_rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : m_rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - row[i].size(), ' ');
            text.append("  ").append(i == 0 ? row[i] + (row.size() > 1 ? padding : "") : padding + row[i]);
        }
        text.append("\n");
    }
    return text;
}

}  // namespace importhost::bench
