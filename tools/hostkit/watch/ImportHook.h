// A function that one loaded library imports, replaced for that library alone while this object lives.
//
// What the library calls through pointers that it took before, and what other libraries call, stays as it was.
#pragma once

#include <vector>

namespace hostkit {

class ImportHook {
public:
    // `library` is the system's handle of it, as PluginLibrary::handle() gives; it stays loaded for longer than the
    // hook, and no call of it runs while a hook is made or ends. The replacement has the function's own signature.
    // A library that does not import the name is left alone. Hooks on one name end in the opposite order.
    // Throws std::runtime_error when the system refuses.
    ImportHook(void* library, const char* name, void* replacement);
    ~ImportHook();
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

    // Whether the library imports it.
    bool holds() const { return !m_slots.empty(); }

    // What the library would have called; null when it imports no such name.
    void* original() const { return m_slots.empty() ? nullptr : m_slots.front().original; }

private:
    // A place in the library that holds the function's address.
    struct Slot {
        void** place = nullptr;
        void* original = nullptr;
    };

    static std::vector<void**> placesOf(void* library, const char* name);
    static void write(void** place, void* value);

    std::vector<Slot> m_slots;
};

}  // namespace hostkit
