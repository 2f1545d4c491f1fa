// What kind of trouble a host is in, and what a plug-in may answer then.
#pragma once

#include "importhost/validate/checks/stage/Playthrough.h"

#include <span>
#include <vector>

namespace importhost::validate {

enum class Trouble {
    Fails,              // the call fails, once
    FailsFromThenOn,    // it and all later ones of its kind fail
    Throws,             // it throws, once
};

// The text of the exception that a host in trouble throws.
inline constexpr char kThrownText[] = "the host is out of order";

enum class Allowed {
    AsEver,             // the plug-in needs nothing from this call
    AsEverButEmpty,     // as ever, but what it delivers may be anything
    AnyFailure,
    Fixed,              // the results below
};

struct CallDemand {
    hostkit::HostCall call;
    Allowed allowed = Allowed::AnyFailure;
    csSDK_int32 result = 0;             // of the importer's selectors
    csSDK_int32 asyncResult = 0;        // of the asynchronous importer's
};

struct TroublePlan {
    Trouble trouble = Trouble::Fails;
    std::span<const CallDemand> demands = {};       // calls without a row may have any failure for an answer
    std::vector<hostkit::HostCall> spared = {};     // calls that get into no trouble
    std::vector<hostkit::HostCall> only = {};       // none: all that the plug-in makes
    int moreOfEachCall = 0;     // beside the first of its kind in every kind of step, so many drawn by lot
};

// Calls by which something is given back: a host that fails in them keeps it on its books.
bool givesBack(hostkit::HostCall call);

// What came of one step while the host was in trouble.
struct TroubledStep {
    const Step& step;
    Outcome found;
    Outcome usual;                                  // without trouble
    bool struck = false;                            // the trouble came while the step was taken
    std::vector<hostkit::ErrorEvent> events = {};   // sent during the step
    std::string escapedText = {};                   // of an exception that left the plug-in
};

// Whether the plug-in may answer so; else the check has failed.
bool isAllowed(CheckRun& run, const TroublePlan& plan, hostkit::HostCall call, const TroubledStep& taken);

}  // namespace importhost::validate
