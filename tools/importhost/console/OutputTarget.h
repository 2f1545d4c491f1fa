// A report that a run writes at its end: a path that was given by mistake must not cost a user a film.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace importhost {

class OutputTarget {
public:
    // Throws UsageError when this UTF-8 path cannot be written, is one of the run's inputs, or is a file that is there
    // and not an earlier report: one that does not begin as `beginning` says, in whatever case. An empty path is good:
    // nothing is written. A file that is missing is made, empty: better found before a long run than after it.
    OutputTarget(std::string path, std::string_view beginning, const std::vector<std::filesystem::path>& inputs);

    // Takes away a file that was made here and never written: a run that was interrupted leaves none.
    ~OutputTarget();
    OutputTarget(const OutputTarget&) = delete;
    OutputTarget& operator=(const OutputTarget&) = delete;

    bool isWanted() const { return !m_path.empty(); }

    // Replaces what the file held, and tells so on standard output. Throws std::runtime_error when the system refuses.
    void write(const std::string& text);

private:
    std::string m_path;
    std::filesystem::path m_target;
    bool m_isNew = false;           // made here, and empty still
};

}  // namespace importhost
