// Formats short texts as a table: the first column left-aligned, the others right-aligned.
#pragma once

#include <string>
#include <vector>

namespace importhost::bench {

class TextTable {
public:
    // Rows may differ in length.
    void add(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }

    // One line per row, indented by two blanks, with at least two blanks between columns.
    std::string text() const;

private:
    std::vector<std::vector<std::string>> m_rows;
};

}  // namespace importhost::bench
