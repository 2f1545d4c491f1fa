// One deliberate fault of a host, and the one complaint that it must raise.
#pragma once

#include "PlayedHost.h"
#include "probe/Sentences.h"

#include <ostream>

struct WrongCase {
    std::string name;
    hostprobe::Sentence sentence;
    std::string complaint;
    std::function<void(PlayedHost& host)> play;
    std::string expectations = {};
};

// For the test framework's messages.
inline void PrintTo(const WrongCase& each, std::ostream* out) { *out << each.name; }

using WrongCases = std::vector<WrongCase>;

WrongCases wrongCallOrders();
WrongCases wrongRecords();
WrongCases wrongTables();
WrongCases wrongMemory();
WrongCases wrongFrames();
WrongCases wrongSuites();
WrongCases wrongSound();
WrongCases wrongAsyncCalls();
