// The list of all groups of checks.
#include "importhost/validate/Groups.h"

namespace importhost::validate {

const std::vector<CheckGroup>& checkGroups() {
    static const std::vector<CheckGroup> groups = {
        {"library", libraryChecks()},
        {"protocol", protocolChecks()},
    };
    return groups;
}

}  // namespace importhost::validate
