#include "probe/Expectations.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace hostprobe {

namespace {

void addRefused(Expectations& expectations, const std::string& suite) {
    const std::size_t colon = suite.find(':');
    if (colon == std::string::npos) {
        expectations.refused.emplace_back(suite, std::nullopt);
    } else {
        expectations.refused.emplace_back(suite.substr(0, colon), std::atoi(suite.c_str() + colon + 1));
    }
}

Expectations parse(const char* text) {
    Expectations expectations;
    std::istringstream words(text ? text : "");
    for (std::string word; std::getline(words, word, ';');) {
        const std::size_t equals = std::min(word.find('='), word.size());
        const std::string name = word.substr(0, equals);
        const std::string value = word.substr(std::min(equals + 1, word.size()));
        expectations.isToldOfSuites = true;
        if (name == "version") expectations.version = std::atoi(value.c_str());
        if (name == "ticks") expectations.ticks = std::atoll(value.c_str());
        if (name == "rows" && value == "rounded") expectations.rows = RowPadding::To128;
        if (name == "rows" && value == "tight") expectations.rows = RowPadding::None;
        if (name == "rows" && value == "odd") expectations.rows = RowPadding::Thirteen;
        if (name == "without") addRefused(expectations, value);
        if (name == "async") expectations.async = value != "no";
    }
    return expectations;
}

}  // namespace

bool Expectations::refuses(const std::string& suite, csSDK_int32 suiteVersion) const {
    return std::any_of(refused.begin(), refused.end(), [&](const auto& row) {
        return row.first == suite && row.second.value_or(suiteVersion) == suiteVersion;
    });
}

const Expectations& expected() {
    static const Expectations expectations = parse(std::getenv("HOSTPROBE_EXPECTS"));
    return expectations;
}

}  // namespace hostprobe
