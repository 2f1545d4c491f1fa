// The stand-in codec library's control interface for tests: what has been called, and failures on demand.
// Beside the eleven functions of the contract the library exports these by the same plain names. All are safe on any
// thread; all state is the process's. Records hold 32-bit numbers only.
#pragma once

#include <cstdint>

// The contract's functions in the order of their export list.
enum StandinFunction : std::uint32_t {
    kStandinLibraryInit = 0,
    kStandinLibraryClose = 1,
    kStandinOpen = 2,
    kStandinClose = 3,
    kStandinGetString = 4,
    kStandinGetParam = 5,
    kStandinCompressQuery = 6,
    kStandinDecompressQuery = 7,
    kStandinDecompressBegin = 8,
    kStandinDecompress = 9,
    kStandinDecompressEnd = 10,
    kStandinFunctionCount = 11,
};

constexpr std::uint32_t kStandinUnchanged = 0xFFFFFFFF;

struct StandinCounters {
    // Since the library was loaded or standin_reset was last called:
    std::uint32_t calls[kStandinFunctionCount] = {};      // by StandinFunction, refused ones and those made to fail too
    std::uint32_t failures[kStandinFunctionCount] = {};   // those of them that returned a failing code
    std::uint32_t overlappingCalls = 0;                   // calls on a handle while another call on it was running
    std::uint32_t closesWithSession = 0;                  // instances closed while their session was running
    std::uint32_t unpreparedOutputs = 0;                  // decode calls whose output record was not set up as agreed
    // At this moment, whatever was reset:
    std::uint32_t outstandingInits = 0;                   // inits not yet paired with a library close
    std::uint32_t openInstances = 0;
    std::uint32_t runningSessions = 0;
};

extern "C" {

// Writes the counters to `out`; nothing if it is null.
void standin_counters(StandinCounters* out);

// Counts from zero again and forgets all ordered failures and answers and the visitor. Open instances stay as they are.
void standin_reset();

// Makes a function fail: of its calls from now on, the `nth` (1 is the next one) and the `count - 1` after it return
// `code`. A new order for the same function replaces the old one; `count` 0 takes it back.
// A call made to fail does nothing else, with three exceptions: quorvane_open also writes handle 0,
// quorvane_get_string returns an unknown value's text in place of a code, and the releasing functions
// (quorvane_library_close, quorvane_close, quorvane_decompress_end) do their work before they report the code.
// Returns 0, or 1 for a function that is none, an `nth` of 0 or a `code` of 0.
std::uint32_t standin_fail(std::uint32_t function, std::uint32_t nth, std::uint32_t count, std::uint32_t code);

// Has `visitor` called with `context` inside the next call of a function that takes a handle, while that call occupies
// the handle and before it does its work; once only. It may call the library in turn. A null `visitor` takes the
// order back. Returns 0, or 1 for a function that takes no handle.
std::uint32_t standin_visit(std::uint32_t function, void (*visitor)(void* context), void* context);

// Has a function answer with another width, height or type than the true one, until standin_reset: in the output record
// of successful calls of quorvane_decompress_query without a request, or of quorvane_decompress_begin.
// kStandinUnchanged leaves a field as it is. What is decoded stays the stream's own. Returns 0, or 1 for any other
// function.
std::uint32_t standin_answer(std::uint32_t function, std::uint32_t width, std::uint32_t height, std::uint32_t type);

}
