// The calls of the plug-in's entry that are about one file.
#pragma once

#include "replay/Arguments.h"
#include "replay/ClipBook.h"
#include "replay/FileMap.h"
#include "replay/Step.h"

namespace replay {

// Samples of one sound request, and bytes of one buffer, beyond which a call is not made again: an honest host asks for
// far less, and a log may hold any number.
inline constexpr std::uint64_t kMostSamples = 1 << 24;
inline constexpr csSDK_int32 kMostBufferBytes = 1 << 26;

class FileSteps {
public:
    // All three must outlive this and its steps.
    FileSteps(hostkit::ImporterSession& importer, const FileMap& files, ClipBook& clips)
        : m_importer(importer), m_files(files), m_clips(clips),
          m_nobody(std::make_shared<ReplayClip>(importer, std::filesystem::path(), "", 0)) {}

    // Nothing for a selector that is not about a file.
    std::optional<Step> step(const LoggedCall& call, const Arguments& arguments);

    // Why there is no clip open for this path.
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
    const ClipPtr m_nobody;                     // never opened: for calls that name no file
};

// "64 x 48 yuy2, 64 x 48 bgra"; "no formats".
std::string formatsText(const std::vector<imFrameFormat>& formats);

}  // namespace replay
