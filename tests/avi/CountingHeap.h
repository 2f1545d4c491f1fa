// The program's heap, counted and, on order, exhausted. Linking it replaces operator new and delete.
#pragma once

#include <cstddef>

namespace heap {

/// Bytes in use now.
std::size_t inUse();

/// Forgets the past: the peak is what is in use now, and no allocation has been made.
void startCounting();

/// The most bytes in use at once since startCounting().
std::size_t peak();

/// Allocations since startCounting().
std::size_t allocations();

/// The allocation with this number, counted from 0 since startCounting(), and all after it fail.
void failFrom(std::size_t number);

/// No allocation fails.
void failNever();

/// Has `visitor` called inside the next allocation, on its thread; once only.
void visitNext(void (*visitor)());

}  // namespace heap
