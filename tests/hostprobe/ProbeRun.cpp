#include "ProbeRun.h"

#include "hostkit/host/HostProfile.h"

#include <cstdlib>
#include <fstream>

namespace {

constexpr char kLastLine[] = " calls checked";

const char* nameOf(hostkit::RowBytesPolicy policy) {
    switch (policy) {
        case hostkit::RowBytesPolicy::Tight: return "tight";
        case hostkit::RowBytesPolicy::Odd: return "odd";
        case hostkit::RowBytesPolicy::RoundedTo128: break;
    }
    return "rounded";
}

}  // namespace

std::string expectationsFor(const std::string& profileName) {
    const hostkit::HostProfile& profile = hostkit::hostProfile(profileName);
    std::string words = "version=" + std::to_string(profile.interfaceVersion);
    words.append(";ticks=").append(std::to_string(profile.ticksPerSecond));
    words.append(";rows=").append(nameOf(profile.rowBytes));
    for (const hostkit::SuiteId& suite : profile.refusedSuites) {
        words.append(";without=").append(suite.name);
        if (suite.version != hostkit::kEveryVersion) {
            words.append(":").append(std::to_string(suite.version));
        }
    }
    return words.append(profile.asksForAsync ? "" : ";async=no");
}

std::filesystem::path probePath() { return hostkit::PluginLibrary::programFolder() / HOST_PROBE_FILE_NAME; }

ProbeRun::ProbeRun(const std::string& expectations)
    : m_expectations("HOSTPROBE_EXPECTS", expectations.empty() ? ";" : expectations) {}

ProbeReport ProbeRun::report() const {
    ProbeReport report;
    std::ifstream in(m_folder.path("report.txt"));
    for (std::string line; std::getline(in, line);) {
        report.complaints.push_back(line);
    }
    if (report.complaints.empty()) {
        return report;
    }
    const std::string last = report.complaints.back();
    const std::size_t at = last.find(kLastLine);
    report.isWhole = at != std::string::npos && at + std::string(kLastLine).size() == last.size();
    report.calls = report.isWhole ? std::atoi(last.c_str()) : 0;
    if (report.isWhole) {
        report.complaints.pop_back();
    }
    return report;
}
