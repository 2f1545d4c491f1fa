// One life of the probe: told what to expect, loaded, used, unloaded, and asked for its report.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "support/TempFolder.h"

#include <string>
#include <vector>

struct ProbeReport {
    bool isWhole = false;                       // the last line counts the calls
    int calls = 0;
    std::vector<std::string> complaints;
};

// The present user's environment for this process and its children. UTF-8.
void setEnvironment(const char* name, const std::string& value);

// The words by which the probe knows a host of this profile.
std::string expectationsFor(const std::string& profile);

std::filesystem::path probePath();

// Environment and report file of one run; the library itself may be loaded by another program.
class ProbeRun {
public:
    explicit ProbeRun(const std::string& expectations);

    // Ask when the probe is unloaded. A report that is missing or cut short is not whole.
    ProbeReport report() const;

    std::string path(const std::string& name) const { return m_folder.path(name); }

private:
    TempFolder m_folder;
};
