// Refusals around the plug-in, chosen at random: the host's, the codec's, the disk's.
#pragma once

#include "importhost/validate/checks/stage/Codec.h"

#include "hostkit/watch/DiskFaults.h"

#include <optional>
#include <set>
#include <string>

namespace importhost::validate {

// The call that is to suffer: only what it is likely to need is refused.
enum class Suffering { Opening, Describing, Showing, Sounding };

class Refusals {
public:
    // What can fail here: the host always; the codec and the disk when they can be made to.
    Refusals(CheckRun& run, PlayedPlugin& plugin);

    // Something that such a call needs fails from now on, until end(). Returns what; end() returns the number of calls
    // that failed, as far as it is known.
    std::string begin(Suffering call);
    int end();

    // What the codec has lent out, as far as it can be told.
    std::string heldByCodec() const { return m_codec ? m_codec->heldText() : ""; }

private:
    int someCall();
    std::string refuseByHost(Suffering call);
    std::string refuseByCodec(Suffering call);
    std::string refuseByDisk(Suffering call);

    CheckRun& m_run;
    hostkit::Host& m_host;
    std::optional<Codec> m_codec;
    hostkit::DiskFaults m_disk;
};

}  // namespace importhost::validate
