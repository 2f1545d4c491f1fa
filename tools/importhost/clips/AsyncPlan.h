// The order in which frames are announced ahead of time and collected.
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
        Refocus,        // everything announced is dropped, as when the editor loses focus and gets it back
    };
    Kind kind = Kind::Announce;
    std::size_t position = 0;       // in the list of wanted frames; 0 for Refocus

    friend bool operator==(const AsyncStep&, const AsyncStep&) = default;
};

struct AsyncOptions {
    std::size_t ahead = 8;                          // frames announced and not yet collected, at most; 1 or more
    std::optional<std::uint32_t> shuffleSeed = {};
    std::size_t refocusEvery = 0;                   // collected frames; 0 for never
};

// A plan that collects each of `frames` frames once, none before it was announced.
//
// Without a seed frames are collected in order, and one more is announced for each collected one. With a seed `ahead`
// frames at a time are announced in order and collected in an order that the seed decides, the same on every system.
// After a Refocus the frames that were dropped by it are announced again.
std::vector<AsyncStep> asyncPlan(std::size_t frames, const AsyncOptions& options);

}  // namespace importhost
