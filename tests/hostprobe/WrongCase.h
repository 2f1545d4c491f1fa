// One deliberate fault of a host, and the one complaint that it must raise.
#pragma once

#include "PlayedHost.h"
#include "probe/Sentences.h"

#include <ostream>

using Host = PlayedHost;
using Play = std::function<void(Host& host)>;

struct WrongCase {
    std::string name;
    hostprobe::Sentence sentence;
    std::string complaint;
    Play play;
    std::string expectations = {};
};

// For the test framework's messages.
inline void PrintTo(const WrongCase& each, std::ostream* out) { *out << each.name; }

inline HostTables& good() { return Host::current().good; }

// A whole life of a host that `spoil` has changed.
inline Play spoilt(Play spoil) {
    return [spoil](Host& host) {
        spoil(host);
        host.play();
    };
}

// `calls` in the life of a file that is described.
inline Play within(Play calls) {
    return [calls](Host& host) {
        host.begin();
        calls(host);
        host.end();
    };
}

// A whole life of a host whose `function` does nothing but return `Value`.
template <auto Value, class Table, class Return, class... Args>
Play returning(Return (*Table::*function)(Args...)) {
    return spoilt([function](Host& host) {
        host.used.get<Table>().*function = [](Args...) { return static_cast<Return>(Value); };
    });
}

// A whole life of a host that calls `change` after its `function`, with the same parameters.
template <class Table, class Return, class... Args, class Change>
Play changed(Return (*Table::*function)(Args...), Change) {
    static Return (*Table::*called)(Args...) = nullptr;
    return spoilt([function](Host& host) {
        called = function;
        host.used.get<Table>().*function = [](Args... args) {
            const Return result = (good().get<Table>().*called)(args...);
            Change{}(args...);
            return result;
        };
    });
}

using WrongCases = std::vector<WrongCase>;

WrongCases wrongCallOrders();
WrongCases wrongRecords();
WrongCases wrongTables();
WrongCases wrongMemory();
WrongCases wrongFrames();
WrongCases wrongSuites();
WrongCases wrongSound();
WrongCases wrongAsyncCalls();
