// A codec library that decodes nothing: it records every call word for word and returns what a test has set. It exports
// these functions in addition to the contract's eleven. Not thread-safe.
#pragma once

#include "codec/QuorvaneApi.h"

extern "C" {

// The calls so far, except those for names of numbers, one line each with a line feed. Valid until the next call of any
// function.
const char* spy_calls();
void spy_forget_calls();

// Sets the description of streams from now on.
void spy_describe(const QuorvaneFormat* stream);

// The same from the second description on.
void spy_describe_later(const QuorvaneFormat* stream);

// Sets the format that sessions report to deliver from now on. Null means the requested format in the stream's size.
void spy_deliver(const QuorvaneFormat* delivered);

// Makes only requests for this codec type succeed from now on. 0 means all.
void spy_accept_only(std::uint32_t type);

}
