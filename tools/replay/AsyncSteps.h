// The calls of asynchronous importers, and the one that creates them. The log does not distinguish such importers: a
// frame is collected from the importer it was announced to, all other calls go to the one created last.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "replay/FileSteps.h"

namespace replay {

class AsyncSteps {
public:
    // All three must outlive this object and its steps.
    AsyncSteps(hostkit::ImporterSession& importer, const FileSteps& files, ClipBook& clips)
        : m_importer(importer), m_files(files), m_clips(clips) {}

    Step createStep(const LoggedCall& call, const Arguments& arguments);
    Step step(const LoggedCall& call, const Arguments& arguments);

    std::size_t size() const { return m_importers.size(); }
    void clear() { m_importers.clear(); }       // flushes and closes all

private:
    struct Pending {
        csSDK_uint32 frameIndex = 0;
        std::vector<imFrameFormat> formats;
    };

    struct AsyncImporter {
        AsyncImporter(hostkit::ImporterSession& importer, const ClipPtr& source)
            : clip(source), session(importer, source->session) {}

        const ClipPtr clip;                     // outlives the session
        hostkit::AsyncSession session;
        std::vector<Pending> pending;           // in order of announcement
    };
    using ImporterPtr = std::shared_ptr<AsyncImporter>;

    ImporterPtr choose(const LoggedCall& call, const Arguments& arguments, Step& step) const;
    static Step announceStep(const LoggedCall& call, const Arguments& arguments, const ImporterPtr& importer,
                             Step step);
    static Step getStep(const LoggedCall& call, const Arguments& arguments, const ImporterPtr& importer, Step step);
    static Step flushStep(const ImporterPtr& importer, Step step);
    Step closeStep(const ImporterPtr& importer, Step step);

    hostkit::ImporterSession& m_importer;
    const FileSteps& m_files;
    ClipBook& m_clips;
    std::vector<ImporterPtr> m_importers;       // open ones, in order of creation
};

}  // namespace replay
