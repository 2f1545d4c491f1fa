#include "importhost/validate/framework/Event.h"

#include "hostkit/system/Text.h"

#include <nlohmann/json.hpp>

#include <stdexcept>

namespace importhost::validate {

void EventList::take(const Event& event) {
    const std::lock_guard lock(m_mutex);
    m_events.push_back(event);
}

std::vector<Event> EventList::events() const {
    const std::lock_guard lock(m_mutex);
    return m_events;
}

EventFile::EventFile(const std::filesystem::path& path) : m_out(path, std::ios::binary) {
    if (!m_out) {
        throw std::runtime_error("'" + hostkit::toUtf8(path) + "' cannot be written.");
    }
}

void EventFile::take(const Event& event) {
    const nlohmann::json line = {{"kind", static_cast<int>(event.kind)}, {"text", event.text}};
    const std::string text = line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    const std::lock_guard lock(m_mutex);
    m_out << text << std::flush;
}

namespace {

// A process that a plug-in crashed may have written anything.
bool isEvent(const nlohmann::json& json) {
    return json.is_object() && json.contains("kind") && json["kind"].is_number_integer() && json.contains("text") &&
           json["text"].is_string();
}

}  // namespace

std::vector<Event> readEvents(const std::filesystem::path& path) {
    std::vector<Event> events;
    std::ifstream in(path, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
        const nlohmann::json json = nlohmann::json::parse(line, nullptr, false);
        if (isEvent(json)) {
            events.push_back({json["kind"].get<EventKind>(), json["text"].get<std::string>()});
        }
    }
    return events;
}

}  // namespace importhost::validate
