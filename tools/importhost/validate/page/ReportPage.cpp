#include "importhost/validate/page/ReportPage.h"

#include "importhost/validate/page/CheckList.h"
#include "importhost/validate/page/FactList.h"
#include "importhost/validate/page/FileCards.h"
#include "importhost/validate/page/PageStyle.h"
#include "importhost/validate/report/JsonAccess.h"
#include "importhost/validate/report/RunTime.h"
#include "importhost/validate/run/Result.h"

namespace importhost::validate {

namespace {

std::string checksText(std::int64_t count) { return std::to_string(count) + (count == 1 ? " check" : " checks"); }

std::string countChips(const Json& counts) {
    struct Chip {
        const char* verdict;
        const char* style;
        const char* words;
    };
    constexpr Chip kChips[] = {{"fail", "bad", "failed"},  {"crash", "bad", "crashed"}, {"timeout", "bad", "too long"},
                               {"warn", "warn", "warned"}, {"skip", "skip", "skipped"}, {"pass", "pass", "passed"}};
    std::string markup;
    for (const Chip& chip : kChips) {
        if (const std::int64_t count = integerOf(counts, chip.verdict); count > 0) {
            markup += textElement("span", std::string("chip ").append(chip.style),
                                  std::to_string(count) + " " + chip.words);
        }
    }
    return element("p", "chips", markup);
}

std::vector<std::string> notImported(const Json& document) {
    std::vector<std::string> names;
    for (const Json& name : member(document, "notImported")) {
        names.push_back(name.is_string() ? name.get<std::string>() : "?");
    }
    return names;
}

std::string headMarkup(const Json& document) {
    const Json& plugin = member(document, "plugin");
    std::string markup = textElement("p", "kicker", "importhost validate");
    markup += textElement("h1", "", verdictSentence(document));
    markup += countChips(member(document, "counts"));
    markup += textElement("p", "path", textOf(plugin, "path"));
    markup += badCheckLinks(document);
    const bool isGood = isSet(document, "isGood") && notImported(document).empty();
    return element("header", isGood ? "good" : "bad", markup);
}

// --- The run ----------------------------------------------------------------------------------------------------

std::string offersText(const Json& offers) {
    std::string text;
    for (const Json& format : member(offers, "formats")) {
        text.append(text.empty() ? "" : "; ").append(textOf(format, "name"));
        text.append(" (").append(textOf(format, "fileType")).append("), .").append(textOf(format, "extension"));
    }
    return text;
}

std::string pluginText(const Json& plugin) {
    const std::string version = textOf(plugin, "version");
    return (version.empty() ? "no version" : "version " + version) + ", " + sizeText(numberOf(plugin, "bytes")) +
           ", of " + textOf(plugin, "modified") + " UTC";
}

std::string runMarkup(const Json& document) {
    const Json& plugin = member(document, "plugin");
    const Json& run = member(document, "run");
    FactList facts;
    facts.add("Plug-in", pluginText(plugin));
    facts.add("Imports", offersText(member(plugin, "offers")));
    facts.add("Run", textOf(run, "started") + " UTC, took " + durationText(numberOf(run, "seconds")));
    facts.add("Level", std::to_string(integerOf(run, "level")) + " of 10");
    facts.addCode("Only", textOf(run, "only"));
    facts.add("Files", isSet(run, "ownSamples") ? "own samples" : "the user's");
    facts.add("Played host", textOf(run, "profile") + "; some checks play another");
    facts.add("Seed", textOf(run, "seed"));
    const Json& tool = member(document, "tool");
    facts.add("Made by", textOf(tool, "name") + " " + textOf(tool, "version"));
    return element("section", "", textElement("h2", "", "The run") + facts.markup() +
                                      textElement("pre", "", textOf(run, "command")));
}

// --- Files ------------------------------------------------------------------------------------------------------

// The user wants to see all files; of our own samples one is enough.
std::string filesMarkup(const Json& document) {
    const bool own = isSet(member(document, "run"), "ownSamples");
    std::string cards;
    for (const Json& file : member(document, "files")) {
        cards += fileCard(file, !own || cards.empty());
    }
    if (cards.empty()) {
        return {};
    }
    const std::string intro =
        own ? textElement("p", "description", "A few of the samples that were written for this run.") : "";
    return element("section", "", textElement("h2", "", "What the plug-in shows") + intro + cards);
}

// --- The verdict ------------------------------------------------------------------------------------------------

std::string checksSentence(const Json& document) {
    const Json& counts = member(document, "counts");
    const std::int64_t all = integerOf(counts, "checks");
    const std::int64_t bad = integerOf(counts, "fail") + integerOf(counts, "crash") + integerOf(counts, "timeout");
    if (bad > 0) {
        return "The plug-in failed " + std::to_string(bad) + " of " + checksText(all) + ".";
    }
    const std::int64_t skipped = integerOf(counts, "skip");
    if (skipped == all) {
        return "No check found anything to look at.";
    }
    const std::string good = skipped > 0 ? checksText(all - skipped) + " and skipped " + std::to_string(skipped)
                                         : (all == 1 ? "" : "all ") + checksText(all);
    return "The plug-in passed " + good + ".";
}

}  // namespace

std::string verdictSentence(const Json& document) {
    const std::string first = notImportedText(notImported(document));
    return first + (first.empty() ? "" : " ") + checksSentence(document);
}

std::string reportPage(const Json& document) {
    const std::string title = verdictSentence(document);
    std::string body = headMarkup(document) + runMarkup(document) + filesMarkup(document);
    body += element("section", "", textElement("h2", "", "Checks") + checkList(document));
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n" +
           textElement("title", "", title) + element("style", "", pageStyle()) + "</head>\n" +
           element("body", "", element("main", "", body)) + "</html>\n";
}

}  // namespace importhost::validate
