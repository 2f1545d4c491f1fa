// Loads the plug-in for each test, with its log on, in a host that tracks all resources.
//
// A test writes files with ClipSketch.h, plays the host through `session` and ClipSession, and compares records,
// results and log lines. After it the plug-in is shut down and unloaded, and must have released everything that it
// acquired from the host and the codec library.
#pragma once

#include "ClipSketch.h"
#include "LogText.h"

#include "hostkit/host/Host.h"
#include "hostkit/plugin/PluginLog.h"
#include "hostkit/sessions/ClipSession.h"
#include "standin/Control.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The codec library that the plug-in has loaded: counters, and failures on demand.
class StandinControl {
public:
    StandinCounters counters() const;
    std::uint32_t calls(StandinFunction function) const { return counters().calls[function]; }
    void reset() const;
    void fail(StandinFunction function, std::uint32_t nth, std::uint32_t count, std::uint32_t code) const;

private:
    static void* symbol(const char* name);
};

class ImporterTest : public ::testing::Test {
protected:
    // The host to play and the plug-in to load; called once for each test.
    virtual hostkit::HostProfile profile() const { return hostkit::hostProfiles().front(); }
    virtual std::filesystem::path pluginPath() const;

    void SetUp() override;
    void TearDown() override;

    // The part of SetUp before the plug-in is initialised.
    void load();

    // Shuts down and unloads the plug-in; the log stays readable.
    void unload();

    hostkit::Host& host() { return *m_host; }
    hostkit::ImporterSession& session() { return *m_session; }
    const StandinControl& standin() const { return m_standin; }

    // Writes a file to the test's folder.
    std::filesystem::path write(const std::string& name, const aviwriter::Bytes& bytes) const;
    std::filesystem::path pathOf(const std::string& name) const { return m_folder.folder() / name; }

    // The normalised log of all calls so far, or only of those that `action` makes.
    Lines log() const;
    Lines logOf(const std::function<void()>& action) const;

    // The same without the lines around each call: the hyphens, the selector, the file's two lines and the result.
    Lines handlerLogOf(const std::function<void()>& action) const;

    // Opens a clip and fetches the information of stream 0. Throws std::runtime_error if either fails.
    std::unique_ptr<hostkit::ClipSession> openClip(const std::filesystem::path& path);
    std::unique_ptr<hostkit::ClipSession> openClip(const std::string& name, const aviwriter::Bytes& bytes);

    // Expects no violations of the host's rules, even while the plug-in still holds something.
    void expectNoViolations();

    // Sets the problems that the host is expected to report after the plug-in's shutdown (default: none).
    void expectProblems(const Lines& problems) { m_expectedProblems = problems; }

private:
    void expectCodecBalanced() const;

    TempFolder m_folder;
    ProgramLog m_log;
    hostkit::LogSwitch m_switch;
    std::unique_ptr<hostkit::Host> m_host;
    std::unique_ptr<hostkit::PluginLibrary> m_plugin;
    std::unique_ptr<hostkit::ImporterSession> m_session;
    StandinControl m_standin;
    Lines m_expectedProblems;
};

// A frame format as the host passes it; 0 means "any".
imFrameFormat frameFormat(PrPixelFormat format, csSDK_int32 width = 0, csSDK_int32 height = 0);

// The first `count` bytes of a delivered frame; empty if there is no frame.
std::vector<int> firstBytes(const hostkit::FrameAnswer& answer, std::size_t count = 4);
