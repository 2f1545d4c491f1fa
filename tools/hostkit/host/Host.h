// The editor, as a plug-in sees it: standard parameters, callback tables and suites, with books kept of everything
// that the plug-in takes and must give back.
//
//   Host host;                                        // or Host host(hostProfile("editor-14"));
//   PluginLibrary plugin(path);
//   ImporterSession session(host, plugin.entry());    // see ImporterSession.h
//   ...
//   EXPECT_EQ(host.problems(), std::vector<std::string>{});
//
// The host's functions carry no context, so one Host exists at a time; it must outlive every use of the plug-in.
// They may be called from many threads at once.
#pragma once

#include "hostkit/host/FrameStore.h"
#include "hostkit/host/HostCall.h"
#include "hostkit/host/HostMemory.h"
#include "hostkit/host/HostProfile.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace hostkit {

// An event that the plug-in sent through the Error Suite.
struct ErrorEvent {
    csSDK_uint32 type = 0;
    std::string title;          // UTF-8
    std::string text;           // UTF-8

    friend bool operator==(const ErrorEvent&, const ErrorEvent&) = default;
};

struct SuiteBalance {
    int acquired = 0;
    int released = 0;
};

class Host {
public:
    // Throws std::logic_error when another Host exists.
    explicit Host(HostProfile profile = hostProfiles().front());
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The one that exists; ends the process with a message when there is none, because a plug-in that calls a host
    // that is gone cannot be answered.
    static Host& current();

    const HostProfile& profile() const { return m_profile; }
    imStdParms* stdParms() { return &m_stdParms; }
    SPBasicSuite* basicSuite();
    PlugMemoryFuncs* memoryFunctions();

    CallLog& calls() { return m_calls; }
    FaultPlan& faults() { return m_faults; }
    HostMemory& memory() { return m_memory; }
    FrameStore& frames() { return m_frames; }

    // From now on these suites are refused beside those that the profile refuses; none: only those. Of one that is
    // refused in one version alone all others are granted, with the same table.
    void refuse(std::vector<SuiteId> suites);

    // Suites given out so far, by name and version.
    std::map<SuiteId, SuiteBalance> suites() const;
    int suitesHeld() const;

    int asyncImportersOpen() const { return m_asyncImporters; }

    std::vector<ErrorEvent> errorEvents() const;
    void forgetErrorEvents();           // for those who measure memory: each is kept until then

    // What the plug-in did wrong so far, whatever it still holds: one sentence each.
    std::vector<std::string> violations() const;

    // Those, and everything that is still held. Empty when the plug-in has given everything back and did no wrong:
    // ask after shutdown and after the last frame was disposed.
    std::vector<std::string> problems() const;

    // For the host's own parts.
    void report(const std::string& violation);
    SPErr acquire(const char* name, csSDK_int32 version, const void** suite);
    SPErr release(const char* name, csSDK_int32 version);
    void addErrorEvent(const ErrorEvent& event);
    void addAsyncImporters(int count) { m_asyncImporters += count; }
    std::optional<csSDK_int32> onCall(HostCall call, const std::string& arguments);

private:
    HostProfile m_profile;
    imStdParms m_stdParms = {};
    CallLog m_calls;
    FaultPlan m_faults;
    HostMemory m_memory;
    FrameStore m_frames;
    std::atomic<int> m_asyncImporters = 0;

    bool refuses(const SuiteId& suite) const;

    mutable std::mutex m_mutex;
    std::vector<SuiteId> m_refused;
    std::map<SuiteId, SuiteBalance> m_suites;
    std::vector<ErrorEvent> m_errorEvents;
    std::vector<std::string> m_violations;
};

}  // namespace hostkit
