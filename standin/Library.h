// The library's instances: handles, and the rule that calls on one handle must not overlap.
#pragma once

#include "standin/Session.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace standin {

struct Instance {
    std::atomic<bool> isOccupied{false};   // a call on the handle is running
    std::unique_ptr<Session> session;      // used only by the call that occupies the instance
};

// The right to use an instance for the length of one call; keeps it alive.
class OccupiedInstance {
public:
    // Throws Refusal if another call occupies the instance.
    explicit OccupiedInstance(std::shared_ptr<Instance> instance);
    ~OccupiedInstance() { m_instance->isOccupied = false; }
    OccupiedInstance(const OccupiedInstance&) = delete;
    OccupiedInstance& operator=(const OccupiedInstance&) = delete;

    bool hasSession() const { return m_instance->session != nullptr; }
    Session& session() const { return *m_instance->session; }
    void begin(std::unique_ptr<Session> session);
    void end();

private:
    std::shared_ptr<Instance> m_instance;
};

// All members are thread-safe.
class Library {
public:
    void init();
    void close();   // throws Refusal if no init is outstanding

    std::uint32_t open();                           // throws Refusal before init
    void forget(std::uint32_t handle);              // the instance is destroyed after its last call
    std::shared_ptr<Instance> find(std::uint32_t handle);   // throws Refusal

    std::uint32_t outstandingInits();
    std::uint32_t openInstances();

private:
    std::mutex m_mutex;
    std::uint32_t m_outstandingInits = 0;
    std::uint32_t m_lastHandle = 0;   // handles are never reused, so stale ones are detected
    std::unordered_map<std::uint32_t, std::shared_ptr<Instance>> m_instances;
};

Library& library();

// Number of running sessions of all instances.
std::uint32_t runningSessions();

}  // namespace standin
