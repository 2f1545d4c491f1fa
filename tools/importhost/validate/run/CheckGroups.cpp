#include "importhost/validate/run/CheckGroups.h"

#include "importhost/validate/framework/Groups.h"
#include "importhost/validate/framework/Wildcard.h"

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

const Check* findCheck(std::string_view id) {
    for (const CheckGroup& group : checkGroups()) {
        for (const Check& check : group.checks) {
            if (check.id == id) {
                return &check;
            }
        }
    }
    return nullptr;
}

std::string_view groupOf(const Check& check) {
    for (const CheckGroup& group : checkGroups()) {
        for (const Check& one : group.checks) {
            if (&one == &check) {
                return group.name;
            }
        }
    }
    return {};
}

std::vector<const Check*> selectChecks(int level, std::string_view pattern) {
    std::vector<const Check*> selected;
    for (const CheckGroup& group : checkGroups()) {
        for (const Check& check : group.checks) {
            if (check.level <= level && (pattern.empty() || fitsWildcard(check.id, pattern))) {
                selected.push_back(&check);
            }
        }
    }
    return selected;
}

}  // namespace importhost::validate
