// The stand-in codec library's control interface for tests: call counters, and failures on demand. The library exports
// these functions in addition to the eleven of the contract, also by plain names. All are thread-safe; all state
// belongs to the process. Records hold 32-bit numbers only.
#pragma once

#include <cstdint>

// The contract's functions, in the order of the export list.
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
    std::uint32_t calls[kStandinFunctionCount] = {};      // by StandinFunction, including refused and failing ones
    std::uint32_t failures[kStandinFunctionCount] = {};   // those that returned a failure code
    std::uint32_t overlappingCalls = 0;                   // calls on a handle while another call on it was running
    std::uint32_t closesWithSession = 0;                  // instances closed while their session was running
    std::uint32_t unpreparedOutputs = 0;                  // decode calls whose output record was not prepared
    // Current values, not affected by a reset:
    std::uint32_t outstandingInits = 0;                   // inits not yet paired with a library close
    std::uint32_t openInstances = 0;
    std::uint32_t runningSessions = 0;
};

extern "C" {

// Writes the counters to `out`; does nothing if it is null.
void standin_counters(StandinCounters* out);

// Resets the counters and cancels all ordered failures, answers and the visitor. Open instances are not affected.
void standin_reset();

// Makes a function fail: of its future calls, the `nth` (1 is the next one) and the following `count - 1` return
// `code`. A new order for the same function replaces the old one; `count` 0 cancels it.
// A failing call does nothing else, with three exceptions: quorvane_open also writes handle 0, quorvane_get_string
// returns the text of an unknown value, and the releasing functions (quorvane_library_close, quorvane_close,
// quorvane_decompress_end) do their work before they return the code.
// Returns 0, or 1 for an invalid function, an `nth` of 0 or a `code` of 0.
std::uint32_t standin_fail(std::uint32_t function, std::uint32_t nth, std::uint32_t count, std::uint32_t code);

// Calls `visitor` with `context`, once, inside the next call of a function that takes a handle: while that call
// occupies the handle, before it does its work. The visitor may call the library. A null `visitor` cancels the order.
// Returns 0, or 1 for a function that takes no handle.
std::uint32_t standin_visit(std::uint32_t function, void (*visitor)(void* context), void* context);

// Makes a function report a wrong width, height or type until standin_reset, in the output record of successful calls
// of quorvane_decompress_query without a request, or of quorvane_decompress_begin. kStandinUnchanged keeps the true
// value of a field. Decoding is not affected. Returns 0, or 1 for any other function.
std::uint32_t standin_answer(std::uint32_t function, std::uint32_t width, std::uint32_t height, std::uint32_t type);

}
