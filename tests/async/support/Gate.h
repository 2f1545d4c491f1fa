// Holds a thread of the plug-in until a test releases it.
#pragma once

#include <condition_variable>
#include <mutex>

class Gate {
public:
    // Called by the thread that is to be held. After a minute the gate opens by itself, so that a failing test that
    // waits for a held thread ends.
    void pass();

    // Waits until a thread is held at the gate. Returns false if none arrives within a minute.
    bool waitForArrival();

    void open();
    bool isOpen() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_arrived = false;
    bool m_open = false;
};
