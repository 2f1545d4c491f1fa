// Counts the program's heap, and makes it fail on request. Linking it replaces operator new and delete.
#pragma once

#include <cstddef>

namespace heap {

// Number of bytes in use.
std::size_t inUse();

// Resets the peak to the bytes in use now, and the number of allocations to 0.
void startCounting();

// Maximum number of bytes in use since startCounting().
std::size_t peak();

// Number of allocations since startCounting().
std::size_t allocations();

// Makes allocation `number`, counted from 0 since startCounting(), and all later ones fail.
void failFrom(std::size_t number);

// Makes no allocation fail.
void failNever();

// Calls `visitor` once, inside the next allocation, on its thread.
void visitNext(void (*visitor)());

}  // namespace heap
