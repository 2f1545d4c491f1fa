#include "importhost/clips/AsyncPlan.h"

#include <random>

namespace importhost {

std::vector<AsyncStep> asyncPlan(std::size_t frames, const AsyncOptions& options) {
    using Kind = AsyncStep::Kind;
    std::mt19937 random(options.shuffleSeed.value_or(0));       // its numbers are the same in every library
    std::vector<AsyncStep> plan;
    std::vector<std::size_t> pending;
    std::size_t announced = 0;
    for (std::size_t collected = 0; collected < frames;) {
        const bool announcesNow = !options.shuffleSeed || pending.empty();
        while (announcesNow && announced < frames && pending.size() < options.ahead) {
            plan.push_back({Kind::Announce, announced});
            pending.push_back(announced++);
        }
        const std::size_t chosen = options.shuffleSeed ? random() % pending.size() : 0;
        plan.push_back({Kind::Collect, pending[chosen]});
        pending.erase(pending.begin() + static_cast<std::ptrdiff_t>(chosen));
        ++collected;
        if (options.refocusEvery != 0 && collected % options.refocusEvery == 0 && collected < frames) {
            plan.push_back({Kind::Refocus, 0});
            for (const std::size_t position : pending) {
                plan.push_back({Kind::Announce, position});
            }
        }
    }
    return plan;
}

}  // namespace importhost
