// Which wrong plug-in each check must catch, and by which words.
#pragma once

#include <span>
#include <string_view>

struct TrustRow {
    std::string_view check;         // id of the check
    std::string_view fault;         // name of the fault, or file name of a library that is wrong by its build
    std::string_view words;         // part of what the check must say: it catches this fault for the right reason
    std::string_view verdict = "FAIL";
};

// One table for each group of checks, in a file of its own.
std::span<const TrustRow> libraryTrust();
std::span<const TrustRow> protocolTrust();
std::span<const TrustRow> frameTrust();
std::span<const TrustRow> audioTrust();
std::span<const TrustRow> asyncTrust();
std::span<const TrustRow> refusingHostTrust();
std::span<const TrustRow> codecTrust();
std::span<const TrustRow> diskTrust();
std::span<const TrustRow> exceptionTrust();
std::span<const TrustRow> stateTrust();
std::span<const TrustRow> measureTrust();
