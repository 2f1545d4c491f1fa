// Sets an environment variable for the lifetime of this object, also for child processes.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <time.h>

class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::string& value) : m_name(std::move(name)) {
        if (const char* before = std::getenv(m_name.c_str())) {
            m_before = before;
        }
        set(value);
    }
    ~EnvironmentVariable() { set(m_before.value_or("")); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    // An empty value removes the variable. The C library must be told to read TZ again.
    void set(const std::string& value) const {
#ifdef _WIN32
        _putenv_s(m_name.c_str(), value.c_str());
        _tzset();
#else
        value.empty() ? unsetenv(m_name.c_str()) : setenv(m_name.c_str(), value.c_str(), 1);
        tzset();
#endif
    }

    std::string m_name;
    std::optional<std::string> m_before;
};
