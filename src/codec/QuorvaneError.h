// The exception for a failed call of the codec library.
#pragma once

#include "codec/QuorvaneApi.h"

#include <cstdint>
#include <stdexcept>
#include <string>

class QuorvaneError : public std::runtime_error {
public:
    // `callDescription` names the call and its arguments; the text of `code` comes from the library.
    QuorvaneError(const std::string& callDescription, std::uint32_t code)
        : std::runtime_error("Quorvane error (" + std::to_string(static_cast<std::int32_t>(code)) + "): " +
                             quorvane_get_string(kQuorvaneErrorText, code) + ": " + callDescription),
          m_code(code) {}

    std::uint32_t code() const { return m_code; }

private:
    std::uint32_t m_code;
};
