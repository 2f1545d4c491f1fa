// A codec library that decodes nothing: it writes down every call word for word and answers what it was told to.
// Beside the contract's eleven functions it exports these. Not safe for calls from several threads.
#pragma once

#include "codec/QuorvaneApi.h"

extern "C" {

// The calls so far but for names of numbers, one line each, every line ended; owned by the library until the next
// call of any function.
const char* spy_calls();
void spy_forget_calls();

// How a stream is described from now on.
void spy_describe(const QuorvaneFormat* stream);

// The same from the second description on.
void spy_describe_later(const QuorvaneFormat* stream);

// What a session is said to deliver from now on; null: the requested format at the stream's size.
void spy_deliver(const QuorvaneFormat* delivered);

// From now on only requests for this codec type succeed; 0: all do.
void spy_accept_only(std::uint32_t type);

}
