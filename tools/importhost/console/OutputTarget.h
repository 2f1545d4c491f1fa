// A report written at the end of a run. Protects the user's other files from being overwritten by mistake.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace importhost {

class OutputTarget {
public:
    // Throws UsageError if this UTF-8 path cannot be written, is one of the run's inputs, or is an existing file other
    // than an earlier report: one that does not begin with `beginning`, ignoring case. With an empty path nothing is
    // written. Creates a missing file, empty: an error is better found before a long run than after it.
    OutputTarget(std::string path, std::string_view beginning, const std::vector<std::filesystem::path>& inputs);

    // Removes a file that was created here but never written, if the run was interrupted.
    ~OutputTarget();
    OutputTarget(const OutputTarget&) = delete;
    OutputTarget& operator=(const OutputTarget&) = delete;

    bool isWanted() const { return !m_path.empty(); }

    // Replaces the file's contents, and reports that on standard output. Throws std::runtime_error on failure.
    void write(const std::string& text);

private:
    std::string m_path;
    std::filesystem::path m_target;
    bool m_isNew = false;           // created here, and still empty
};

}  // namespace importhost
