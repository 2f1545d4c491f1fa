// What a running check tells, as it tells it. Written to a file line by line, so that what was said before a crash is
// there afterwards.
#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

namespace importhost::validate {

enum class EventKind {
    Step,           // what is being done; the last one is where a crash happened
    Note,           // evidence worth reading whatever the verdict
    Warning,
    Failure,
    Skip,
    Call,           // one of the latest calls between host and plug-in when the first failure was found
    NotImported,    // the name of a file of the user's that the plug-in does not import
    End,            // the check came to its end
};

struct Event {
    EventKind kind = EventKind::Note;
    std::string text;

    friend bool operator==(const Event&, const Event&) = default;
};

// Takes events; safe on any thread.
class EventSink {
public:
    EventSink() = default;
    virtual ~EventSink() = default;
    EventSink(const EventSink&) = delete;
    EventSink& operator=(const EventSink&) = delete;
    virtual void take(const Event& event) = 0;
};

class EventList : public EventSink {
public:
    void take(const Event& event) override;
    std::vector<Event> events() const;

private:
    mutable std::mutex m_mutex;
    std::vector<Event> m_events;
};

class EventFile : public EventSink {
public:
    // Throws std::runtime_error when the file cannot be written.
    explicit EventFile(const std::filesystem::path& path);
    void take(const Event& event) override;

private:
    std::mutex m_mutex;
    std::ofstream m_out;
};

// The events in such a file; a last line that was cut off is left out. None for a file that is not there.
std::vector<Event> readEvents(const std::filesystem::path& path);

}  // namespace importhost::validate
