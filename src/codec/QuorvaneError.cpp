#include "codec/QuorvaneError.h"

#include "codec/QuorvaneApi.h"

QuorvaneError::QuorvaneError(const std::string& callDescription, std::uint32_t code)
    : std::runtime_error("Quorvane error (" + std::to_string(static_cast<std::int32_t>(code)) + "): " +
                         quorvane_get_string(kQuorvaneErrorText, code) + ": " + callDescription),
      m_code(code) {}
