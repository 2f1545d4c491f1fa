// The plug-in loaded afresh for each test, in a host that keeps books, with its log switched on.
//
// A test makes files with ClipSketch.h, plays the host through `session` and ClipSession, and compares records,
// results and log lines. When it is over, the plug-in is shut down and unloaded, and everything it took from the host
// and from the codec library must have been given back.
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
    // What kind of host is played, and which plug-in is loaded; asked once for each test.
    virtual hostkit::HostProfile profile() const { return hostkit::hostProfiles().front(); }
    virtual std::filesystem::path pluginPath() const;

    void SetUp() override;
    void TearDown() override;

    // What SetUp does before the plug-in is initialised.
    void load();

    // Shuts down and unloads the plug-in now; the log stays readable.
    void unload();

    hostkit::Host& host() { return *m_host; }
    hostkit::ImporterSession& session() { return *m_session; }
    const StandinControl& standin() const { return m_standin; }

    // Writes a file of that name into the test's folder.
    std::filesystem::path write(const std::string& name, const aviwriter::Bytes& bytes) const;
    std::filesystem::path pathOf(const std::string& name) const { return m_folder.folder() / name; }

    // The normalised log of all calls so far, or of those made by `action` only.
    Lines log() const;
    Lines logOf(const std::function<void()>& action) const;

    // The same without the frame of each call: the hyphens, the selector, the file's two lines and the result.
    Lines handlerLogOf(const std::function<void()>& action) const;

    // An opened clip with the information of stream 0 fetched; a failure of either ends the test.
    std::unique_ptr<hostkit::ClipSession> openClip(const std::filesystem::path& path);
    std::unique_ptr<hostkit::ClipSession> openClip(const std::string& name, const aviwriter::Bytes& bytes);

    // The host has no complaint at all, whatever the plug-in still holds.
    void expectNoViolations();

    // What the host complains of when the plug-in has been shut down; nothing unless said here.
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

// A frame format as the host sends it; 0 means "any".
imFrameFormat frameFormat(PrPixelFormat format, csSDK_int32 width = 0, csSDK_int32 height = 0);

// The first pixel's bytes of a delivered frame, `count` of them; empty when there is no frame.
std::vector<int> firstBytes(const hostkit::FrameAnswer& answer, std::size_t count = 4);
