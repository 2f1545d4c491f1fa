// A place where one clip at a time is worked on at random, each answer held against the model.
#pragma once

#include "importhost/validate/checks/state/Refusals.h"
#include "importhost/validate/checks/state/StateModel.h"

#include "hostkit/sessions/AsyncSession.h"

#include <functional>
#include <memory>

namespace importhost::validate {

class Desk {
public:
    // `refusals` is null when nothing is to fail. All must outlive the desk; the files must not be empty.
    Desk(CheckRun& run, PlayedPlugin& plugin, std::vector<KnownFile>& files, Refusals* refusals);

    // One call, or a few that belong together, chosen at random among those that an editor could make now.
    void act();

    // Closes what is open, as before the plug-in is shut down. What was learnt of the files stays.
    void leave();

    // How many calls around the plug-in were refused while this desk worked.
    int struck() const { return m_struck; }

    // Called when something fails somewhere: what is being decoded here may suffer.
    void doubtAnnounced() { m_announced.doubtAll(); }

    // What all desks must be told before something fails.
    void tellOthers(std::function<void()> tell) { m_beforeRefusals = std::move(tell); }

private:
    using Action = void (Desk::*)();

    void openSome();
    void close();
    void quiet();
    void openAgain();
    void describe();
    void describeStream(std::size_t stream);
    void formats();
    void frame();
    void sound();
    void layout();
    void analyse();
    void createAsync();
    void announce();
    void collect();
    void flush();
    void closeAsync();
    void senseless();

    Action choose();
    FrameWish someFrame();
    imFileInfoRec8 currentInfo() const;
    std::string where() const;

    // Makes the call while something may fail. Returns what failed; empty if nothing did.
    std::string whileRefusing(Suffering suffering, const std::function<void()>& call);

    void expectResult(const std::string& what, csSDK_int32 found, csSDK_int32 wanted);
    void expectFrame(const FrameWish& wish, const Outcome& found, const std::string& when);
    void expectRemembered(const std::string& what, const Outcome& found);
    void expectRefused(const std::string& what, csSDK_int32 found, std::initializer_list<csSDK_int32> legal,
                       const std::string& refusal);
    Outcome askForFrame(const FrameWish& wish);
    PrTime timeOf(std::int64_t frame) const;

    CheckRun& m_run;
    PlayedPlugin& m_plugin;
    std::vector<KnownFile>& m_files;
    Refusals* m_refusals;
    std::function<void()> m_beforeRefusals;
    KnownFile* m_file = nullptr;
    ClipState m_state;
    std::unique_ptr<hostkit::ClipSession> m_clip;
    std::unique_ptr<hostkit::AsyncSession> m_async;
    AnnouncedFrames m_announced;
    int m_struck = 0;
};

}  // namespace importhost::validate
