#include "hostkit/watch/ImportHook.h"

namespace hostkit {

ImportHook::ImportHook(void* library, const char* name, void* replacement) {
    for (void** place : placesOf(library, name)) {
        m_slots.push_back({place, *place});
        write(place, replacement);
    }
}

ImportHook::~ImportHook() {
    for (const Slot& slot : m_slots) {
        write(slot.place, slot.original);
    }
}

}  // namespace hostkit
