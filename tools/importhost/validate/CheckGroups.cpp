// The list of all groups of checks.
#include "importhost/validate/Groups.h"

namespace importhost::validate {

const std::vector<CheckGroup>& checkGroups() {
    static const std::vector<CheckGroup> groups = {
        {"library", libraryChecks()},
        {"protocol", protocolChecks()},
        {"frames", frameChecks()},
        {"audio", audioChecks()},
        {"async", asyncChecks()},
        {"refusing-host", refusingHostChecks()},
        {"codec", codecChecks()},
        {"disk", diskChecks()},
        {"exceptions", exceptionChecks()},
        {"state", stateChecks()},
        {"measures", measureChecks()},
    };
    return groups;
}

}  // namespace importhost::validate
