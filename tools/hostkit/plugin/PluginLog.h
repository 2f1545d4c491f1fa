// The plug-in's own log: switching it on for a run, and reading the files that it wrote.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

// Sets the log switch of the current user while it lives, and puts back what was there before. The plug-in reads the
// switch once, at its first call after loading: make this object before loading it. A process that is killed leaves
// the switch as it was set.
class LogSwitch {
public:
    // Throws std::runtime_error when the system refuses.
    explicit LogSwitch(bool on = true);
    ~LogSwitch();
    LogSwitch(const LogSwitch&) = delete;
    LogSwitch& operator=(const LogSwitch&) = delete;

    // Whether the switch stands at on for a plug-in that is loaded now.
    static bool isOn();

private:
    struct Saved;
    std::unique_ptr<Saved> m_saved;
};

// The folder that the plug-in writes its logs to; it may not exist yet.
std::filesystem::path pluginLogFolder();

// Tells the log files that appear from now on from those of other runs.
class PluginLog {
public:
    PluginLog();

    // Files written since, in order of name, which is the order of their opening.
    std::vector<std::filesystem::path> newFiles() const;

    // The lines of all those files without line ends; `messages` also without "[time] [thread] ".
    std::vector<std::string> lines() const;
    std::vector<std::string> messages() const;

private:
    std::vector<std::filesystem::path> m_before;
};

// The lines of one file without line ends. Throws std::runtime_error when it cannot be read.
std::vector<std::string> readLogLines(const std::filesystem::path& file);

// A line without its prefix; a line without a prefix as it is.
std::string_view withoutLogPrefix(std::string_view line);

}  // namespace hostkit
