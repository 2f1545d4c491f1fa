// A place where a thread of the plug-in is held until a test lets it go.
#pragma once

#include <condition_variable>
#include <mutex>

class Gate {
public:
    // For the thread that is to be held. A minute at most, then the gate is open: a test that waits for a held thread
    // must come to its end, and see that it failed.
    void pass();

    // Waits until a thread stands at the gate; false when none came within a minute.
    bool waitForArrival();

    void open();
    bool isOpen() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_arrived = false;
    bool m_open = false;
};
