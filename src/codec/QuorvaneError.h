// The exception for a failed call of the codec library.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

class QuorvaneError : public std::runtime_error {
public:
    // `callDescription` names the call and its arguments; the library gives the text of `code`.
    QuorvaneError(const std::string& callDescription, std::uint32_t code);

    std::uint32_t code() const { return m_code; }

private:
    std::uint32_t m_code;
};
