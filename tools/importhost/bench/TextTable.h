// Rows of short texts in columns: the first to the left, the others to the right.
#pragma once

#include <string>
#include <vector>

namespace importhost::bench {

class TextTable {
public:
    // A row may be shorter than others.
    void add(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }

    // A line for each row, with two blanks before it and at least two between columns.
    std::string text() const;

private:
    std::vector<std::vector<std::string>> m_rows;
};

}  // namespace importhost::bench
