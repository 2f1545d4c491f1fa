// One life of the probe: configured, loaded, used, unloaded, and its report read.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "support/Environment.h"
#include "support/TempFolder.h"

#include <string>
#include <vector>

struct ProbeReport {
    bool isWhole = false;                       // the last line counts the calls
    int calls = 0;
    std::vector<std::string> complaints;
};

// Returns what the probe should expect of a host of this profile.
std::string expectationsFor(const std::string& profile);

std::filesystem::path probePath();

// Environment and report file of one run; the library itself may be loaded by another program.
class ProbeRun {
public:
    explicit ProbeRun(const std::string& expectations);

    // Call after the probe is unloaded. A missing or truncated report is not whole.
    ProbeReport report() const;

    std::string path(const std::string& name) const { return m_folder.path(name); }

private:
    TempFolder m_folder;
    EnvironmentVariable m_reportPath{"HOSTPROBE_REPORT", m_folder.path("report.txt")};
    EnvironmentVariable m_expectations;
};
