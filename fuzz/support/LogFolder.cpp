// The log's folder, of which nothing is kept: lines are made whole, and then go nowhere.
#include "log/LogFolder.h"

LogFolder::LogFolder() : m_path(QUORVANE_NULL_DEVICE) {}

std::FILE* LogFolder::open(const char*, int, bool toWrite) const {
    return toWrite ? std::fopen(QUORVANE_NULL_DEVICE, "w") : nullptr;
}
