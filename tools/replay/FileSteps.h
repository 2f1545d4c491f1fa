// The calls of the plug-in's entry for one file.
#pragma once

#include "replay/Arguments.h"
#include "replay/ClipBook.h"
#include "replay/FileMap.h"
#include "replay/Step.h"

namespace replay {

// Maximum samples of a sound request, and bytes of a buffer; calls with more are not repeated. Real hosts ask for far
// less, and a log may contain any number.
inline constexpr std::uint64_t kMostSamples = 1 << 24;
inline constexpr csSDK_int32 kMostBufferBytes = 1 << 26;

class FileSteps {
public:
    // All three must outlive this object and its steps.
    FileSteps(hostkit::ImporterSession& importer, const FileMap& files, ClipBook& clips)
        : m_importer(importer), m_files(files), m_clips(clips),
          m_nobody(std::make_shared<ReplayClip>(importer, std::filesystem::path(), "", 0)) {}

    // Empty for a selector that is not for a file.
    std::optional<Step> step(const LoggedCall& call, const Arguments& arguments);

    // Says why no clip is open for this path.
    std::string reasonWithoutClip(const std::string& loggedPath) const;

private:
    using Handler = Step (FileSteps::*)(const LoggedCall&, const Arguments&, const ClipPtr&, Step);
    static Handler handlerOf(csSDK_int32 selector);

    Step openStep(const LoggedCall& call, const Arguments& arguments);
    Step quietStep(const LoggedCall&, const Arguments&, const ClipPtr& clip, Step step);
    Step closeStep(const LoggedCall&, const Arguments&, const ClipPtr& clip, Step step);
    Step infoStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step);
    Step pixelFormatStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step);
    Step analysisStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step);
    Step dataRateStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step);
    Step frameStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step);
    Step layoutStep(const LoggedCall&, const Arguments&, const ClipPtr& clip, Step step);
    Step soundStep(const LoggedCall& call, const Arguments& arguments, const ClipPtr& clip, Step step);

    csSDK_int32 askDataRate(const ClipPtr& clip, csSDK_int32 bytes);
    csSDK_int32 askFrame(const ClipPtr& clip, PrTime time, std::vector<imFrameFormat> formats, bool hasPlace);

    hostkit::ImporterSession& m_importer;
    const FileMap& m_files;
    ClipBook& m_clips;
    const ClipPtr m_nobody;                     // never opened: for calls without a file
};

// "64 x 48 yuy2, 64 x 48 bgra"; "no formats".
std::string formatsText(const std::vector<imFrameFormat>& formats);

}  // namespace replay
