#include "importhost/replay/ReplayReport.h"

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"
#include "replay/LineScan.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace importhost {

namespace {

// More differences than this are only counted in the text; the JSON report has all of them.
constexpr std::size_t kMostLinesOfACall = 20;
constexpr std::size_t kMostCallsWithLines = 50;

std::string number(std::size_t value) { return std::to_string(value); }

std::string counted(std::size_t count, const std::string& what) {
    return number(count) + " " + what + (count == 1 ? "" : "s");
}

std::string nameOf(const ReplayedCall& call, csSDK_int32 result) {
    return call.logged->entry == replay::Entry::Async ? hostkit::asyncResultText(result)
                                                      : hostkit::resultText(result);
}

std::string fileText(const replay::MappedFile& file) {
    const std::string logged = replay::printable(file.logged);
    return file.file ? logged + " -> " + hostkit::toUtf8(*file.file)
                     : logged + " -> not given; " + counted(file.calls, "call") + " skipped";
}

std::string differingMessages(const ReplayReport& report) {
    std::string text;
    std::size_t shown = 0;
    for (const ReplayedCall& call : report.calls) {
        if (call.messages.isEmpty() || ++shown > kMostCallsWithLines) {
            continue;
        }
        text += "  call " + number(call.number) + ", line " + number(call.logged->line) + ": " + call.text + "\n";
        const auto& lines = call.messages.lines;
        for (std::size_t i = 0; i < std::min(lines.size(), kMostLinesOfACall); ++i) {
            text += "    " + replay::printable(lines[i]) + "\n";
        }
        if (lines.size() > kMostLinesOfACall) {
            text += "    ... and " + counted(lines.size() - kMostLinesOfACall, "line") + " more\n";
        }
    }
    if (shown > kMostCallsWithLines) {
        text += "  ... and " + counted(shown - kMostCallsWithLines, "call") + " more\n";
    }
    return text.empty() ? "" : "\nmessages that differ (- the log, + now)\n" + text;
}

std::string countedTexts(const std::string& title, const std::map<std::string, std::size_t>& counts) {
    std::string text;
    for (const auto& [what, count] : counts) {
        char shown[32] = {};
        std::snprintf(shown, sizeof shown, "%6zu  ", count);
        text += shown + what + "\n";
    }
    return text.empty() ? "" : "\n" + title + "\n" + text;
}

std::string totalsText(const ReplayReport& report) {
    const ReplayTotals totals = report.totals();
    std::string text = "\n" + counted(report.calls.size(), "call") + ": " + number(totals.replayed) + " replayed, " +
                       number(totals.skipped) + " skipped; " + number(totals.results) +
                       (totals.results == 1 ? " result differs" : " results differ");
    text += report.comparesMessages ? "; messages of " + counted(totals.messages, "call") + " differ.\n"
                                    : "; messages were not compared.\n";
    if (totals.withoutResult > 0) {
        text += counted(totals.withoutResult, "call") + " without an end in the log.\n";
    }
    return text;
}

}  // namespace

ReplayTotals ReplayReport::totals() const {
    ReplayTotals totals;
    for (const ReplayedCall& call : calls) {
        totals.skipped += call.skipped.has_value();
        totals.replayed += !call.skipped.has_value();
        totals.results += call.resultDiffers();
        totals.messages += !call.messages.isEmpty();
        totals.withoutResult += !call.skipped && call.lacksResult();
    }
    return totals;
}

std::string headText(const ReplayReport& report) {
    std::string text = "log     " + hostkit::toUtf8(report.logFile) + ": " + counted(report.log.calls.size(), "call") +
                       ", " + counted(report.log.threads, "thread") +
                       (report.log.isComplete ? "" : ", ends before the plug-in's end") + "\n";
    if (!report.log.application.empty()) {
        text += "from    " + replay::printable(report.log.application) + "\n";
    }
    for (const replay::MappedFile& file : report.files.entries()) {
        text += "file    " + fileText(file) + "\n";
    }
    for (const std::filesystem::path& file : report.files.unused()) {
        text += "unused  " + hostkit::toUtf8(file) + "\n";
    }
    for (const std::string& remark : report.log.remarks) {
        text += "remark  " + remark + "\n";
    }
    for (const std::string& sentence : report.played) {
        text += "played  " + sentence + "\n";
    }
    return text + "\n";
}

std::string callText(const ReplayedCall& call) {
    char shown[32] = {};
    std::snprintf(shown, sizeof shown, "%6zu  ", call.number);
    std::string text = shown + call.text;
    for (const std::string& assumed : call.assumed) {
        text += " (assumed: " + assumed + ")";
    }
    return text + ": " + (call.skipped ? "skipped, " + *call.skipped : "");
}

std::string resultText(const ReplayedCall& call) {
    if (call.skipped) {
        return "";
    }
    const std::string now = nameOf(call, call.result);
    if (call.lacksResult()) {
        return now + ", where the log ends";
    }
    return call.resultDiffers() ? now + " DIFFERS from the log's " + nameOf(call, *call.logged->result) : now;
}

std::string tailText(const ReplayReport& report) {
    std::map<std::string, std::size_t> skipped;
    std::map<std::string, std::size_t> assumed;
    for (const ReplayedCall& call : report.calls) {
        if (call.skipped) {
            ++skipped[*call.skipped];
        }
        for (const std::string& what : call.assumed) {
            ++assumed[what];
        }
    }
    std::string text = differingMessages(report) + countedTexts("skipped", skipped) +
                       countedTexts("assumed, as the log does not tell", assumed) + totalsText(report);
    for (const std::string& remark : report.remarks) {
        text += remark + "\n";
    }
    return text;
}

}  // namespace importhost
