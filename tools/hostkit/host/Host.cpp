#include "hostkit/host/Host.h"

#include "hostkit/host/HostTables.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace hostkit {

namespace {

std::atomic<Host*> currentHost = nullptr;

std::string times(int count) { return std::to_string(count) + (count == 1 ? " time" : " times"); }

std::string describe(const SuiteId& suite) {
    return "'" + suite.name + "' version " + std::to_string(suite.version);
}

// A host that refuses just one version is of another age: it has others, whose tables begin alike.
bool hasOtherVersions(const std::vector<SuiteId>& refused, const std::string& name) {
    return std::ranges::any_of(refused, [&](const SuiteId& suite) {
        return suite.name == name && suite.version != kEveryVersion;
    });
}

}  // namespace

Host::Host(HostProfile profile)
    : m_profile(std::move(profile)),
      m_memory([this](const std::string& violation) { report(violation); }),
      m_frames(m_profile.rowBytes, [this](const std::string& violation) { report(violation); }) {
    Host* none = nullptr;
    if (!currentHost.compare_exchange_strong(none, this)) {
        throw std::logic_error("A second host cannot be played while the first exists.");
    }
    m_stdParms.imInterfaceVer = m_profile.interfaceVersion;
    m_stdParms.funcs = callbackTable();
    m_stdParms.piSuites = piSuitesTable();
}

Host::~Host() { currentHost = nullptr; }

Host& Host::current() {
    Host* host = currentHost;
    if (!host) {
        std::fputs("A plug-in called a function of a host that is gone.\n", stderr);
        std::abort();
    }
    return *host;
}

SPBasicSuite* Host::basicSuite() { return basicTable(); }

PlugMemoryFuncs* Host::memoryFunctions() { return memoryTable(); }

void Host::refuse(std::vector<SuiteId> suites) {
    const std::lock_guard lock(m_mutex);
    m_refused = std::move(suites);
}

bool Host::refuses(const SuiteId& suite) const {
    const std::lock_guard lock(m_mutex);
    return m_profile.refuses(suite) || contains(m_refused, suite);
}

std::map<SuiteId, SuiteBalance> Host::suites() const {
    const std::lock_guard lock(m_mutex);
    return m_suites;
}

int Host::suitesHeld() const {
    int held = 0;
    for (const auto& [suite, balance] : suites()) {
        held += balance.acquired - balance.released;
    }
    return held;
}

std::vector<ErrorEvent> Host::errorEvents() const {
    const std::lock_guard lock(m_mutex);
    return m_errorEvents;
}

void Host::forgetErrorEvents() {
    const std::lock_guard lock(m_mutex);
    m_errorEvents = {};
}

std::vector<std::string> Host::violations() const {
    const std::lock_guard lock(m_mutex);
    return m_violations;
}

std::vector<std::string> Host::problems() const {
    std::vector<std::string> sentences = violations();
    for (const auto& [suite, balance] : suites()) {
        if (balance.acquired != balance.released) {
            sentences.push_back("The suite " + describe(suite) + " was acquired " + times(balance.acquired) +
                                " and released " + times(balance.released) + ".");
        }
    }
    if (const int open = asyncImportersOpen(); open != 0) {
        sentences.push_back("Asynchronous importers not closed: " + std::to_string(open) + ".");
    }
    for (const std::vector<std::string>& held : {m_frames.problems(), m_memory.problems()}) {
        sentences.insert(sentences.end(), held.begin(), held.end());
    }
    return sentences;
}

void Host::report(const std::string& violation) {
    const std::lock_guard lock(m_mutex);
    m_violations.push_back(violation);
}

SPErr Host::acquire(const char* name, csSDK_int32 version, const void** suite) {
    const SuiteId id{name, version};
    const bool isRefused = refuses(id);
    const std::lock_guard lock(m_mutex);
    const csSDK_int32 wanted = hasOtherVersions(m_refused, id.name) ? kEveryVersion : version;
    *suite = isRefused ? nullptr : suiteTable(name, wanted);
    if (!*suite) {
        return kSPSuiteNotFoundError;
    }
    ++m_suites[id].acquired;
    return kSPNoError;
}

SPErr Host::release(const char* name, csSDK_int32 version) {
    const SuiteId id{name, version};
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_suites.find(id);
        if (found != m_suites.end() && found->second.acquired > found->second.released) {
            ++found->second.released;
            return kSPNoError;
        }
    }
    report("The suite " + describe(id) + " was released without being held.");
    return kSPSuiteNotFoundError;
}

void Host::addErrorEvent(const ErrorEvent& event) {
    const std::lock_guard lock(m_mutex);
    m_errorEvents.push_back(event);
}

std::optional<csSDK_int32> Host::onCall(HostCall call, const std::string& arguments) {
    m_calls.add(call, arguments);
    return m_faults.take(call);
}

}  // namespace hostkit
