#include "standin/Library.h"

#include "standin/ControlState.h"
#include "standin/Result.h"

#include <utility>

namespace standin {
namespace {

std::atomic<std::uint32_t> g_runningSessions{0};

}  // namespace

std::uint32_t runningSessions() {
    return g_runningSessions;
}

OccupiedInstance::OccupiedInstance(std::shared_ptr<Instance> instance) : m_instance(std::move(instance)) {
    if (m_instance->isOccupied.exchange(true)) {
        control().countOverlap();
        throw Refusal(Result::kOverlappingCall);
    }
}

void OccupiedInstance::begin(std::unique_ptr<Session> session) {
    m_instance->session = std::move(session);
    ++g_runningSessions;
}

void OccupiedInstance::end() {
    m_instance->session.reset();
    --g_runningSessions;
}

Library& library() {
    static Library instance;
    return instance;
}

void Library::init() {
    const std::lock_guard lock(m_mutex);
    ++m_outstandingInits;
}

void Library::close() {
    const std::lock_guard lock(m_mutex);
    require(m_outstandingInits > 0, Result::kNotInitialised);
    --m_outstandingInits;
}

std::uint32_t Library::open() {
    const std::lock_guard lock(m_mutex);
    require(m_outstandingInits > 0, Result::kNotInitialised);
    m_instances.emplace(m_lastHandle + 1, std::make_shared<Instance>());
    return ++m_lastHandle;
}

void Library::forget(std::uint32_t handle) {
    const std::lock_guard lock(m_mutex);
    m_instances.erase(handle);
}

std::shared_ptr<Instance> Library::find(std::uint32_t handle) {
    const std::lock_guard lock(m_mutex);
    require(m_outstandingInits > 0, Result::kNotInitialised);
    const auto found = m_instances.find(handle);
    require(found != m_instances.end(), Result::kUnknownHandle);
    return found->second;
}

std::uint32_t Library::outstandingInits() {
    const std::lock_guard lock(m_mutex);
    return m_outstandingInits;
}

std::uint32_t Library::openInstances() {
    const std::lock_guard lock(m_mutex);
    return static_cast<std::uint32_t>(m_instances.size());
}

}  // namespace standin
