// A progress bar on the terminal; nothing if standard error is redirected.
#pragma once

#include <cstdint>
#include <string>

namespace importhost {

class Progress {
public:
    Progress(std::string what, std::int64_t total);
    ~Progress();                        // removes the bar
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void step();

    // Clears the line for other text; the next step draws the bar again.
    void clear();

    // "frames [#####.....]  50%  12 of 24"
    static std::string bar(const std::string& what, std::int64_t done, std::int64_t total);

private:
    std::string m_what;
    std::int64_t m_total;
    std::int64_t m_done = 0;
    std::size_t m_drawn = 0;            // characters currently on the terminal
    bool m_shown;
};

}  // namespace importhost
