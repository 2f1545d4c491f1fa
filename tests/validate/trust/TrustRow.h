// Which wrong plug-in each check must catch, and what it must print.
#pragma once

#include <span>
#include <string_view>

struct TrustRow {
    std::string_view check;         // id of the check
    std::string_view fault;         // name of the fault, or file name of a library with a wrong build
    std::string_view words;         // part of the check's output, which shows that it failed for the right reason
    std::string_view verdict = "FAIL";
};

// One table for each group of checks, each in its own file.
std::span<const TrustRow> libraryTrust();
std::span<const TrustRow> systemLibraryTrust();     // the libraries of one system
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
