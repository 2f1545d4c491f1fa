// Plans the order in which frames are announced and collected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace importhost {

struct AsyncStep {
    enum class Kind {
        Announce,
        Collect,
        Refocus,        // all announced frames are dropped, as if the editor lost focus and got it back
    };
    Kind kind = Kind::Announce;
    std::size_t position = 0;       // index in the list of requested frames; 0 for Refocus

    friend bool operator==(const AsyncStep&, const AsyncStep&) = default;
};

struct AsyncOptions {
    std::size_t ahead = 8;                          // maximum number of frames announced but not collected; 1 or more
    std::optional<std::uint32_t> shuffleSeed = {};
    std::size_t refocusEvery = 0;                   // after this many collected frames; 0: never
};

// A plan that collects each of `frames` frames once, after announcing it.
//
// Without a seed frames are collected in order, and one more is announced for each collected one. With a seed, `ahead`
// frames at a time are announced in order and collected in a random order that depends only on the seed. Frames dropped
// by a Refocus are announced again after it.
std::vector<AsyncStep> asyncPlan(std::size_t frames, const AsyncOptions& options);

}  // namespace importhost
