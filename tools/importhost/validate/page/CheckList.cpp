#include "importhost/validate/page/CheckList.h"

#include "importhost/validate/page/Html.h"
#include "importhost/validate/report/JsonAccess.h"
#include "importhost/validate/report/RunTime.h"

#include <algorithm>
#include <array>
#include <vector>

namespace importhost::validate {

namespace {

// The worst first; what is not here is worse than all.
constexpr std::array<std::string_view, 6> kOrder = {"crash", "timeout", "fail", "warn", "skip", "pass"};

std::size_t rankOf(const Json& check) {
    return static_cast<std::size_t>(std::find(kOrder.begin(), kOrder.end(), textOf(check, "verdict")) -
                                    kOrder.begin());
}

std::string_view styleOf(const Json& check) {
    const std::size_t rank = rankOf(check);
    return rank == 5 ? "pass" : rank == 4 ? "skip" : rank == 3 ? "warn" : "bad";
}

std::string badge(const Json& check) {
    return textElement("span", std::string("badge ").append(styleOf(check)), textOf(check, "verdict"));
}

// --- One check --------------------------------------------------------------------------------------------------

std::string listMarkup(const Json& lines, std::string_view style) {
    std::string markup;
    for (const Json& line : lines) {
        markup += textElement("li", "", line.is_string() ? line.get<std::string>() : "");
    }
    return markup.empty() ? "" : element("ul", style, markup);
}

std::string titled(std::string_view title, const std::string& markup) {
    return markup.empty() ? "" : textElement("h5", "", title) + markup;
}

std::string callsMarkup(const Json& calls) {
    std::string text;
    for (const Json& call : calls) {
        text.append(call.is_string() ? call.get<std::string>() : "").append("\n");
    }
    return text.empty() ? "" : textElement("pre", "", text);
}

std::string preMarkup(const std::string& text) { return text.empty() ? "" : textElement("pre", "", text); }

// What went before a failure is of interest for bad checks alone.
std::string evidenceMarkup(const Json& check) {
    std::string markup = listMarkup(member(check, "failures"), "failures");
    markup += listMarkup(member(check, "warnings"), "warnings");
    markup += titled("Notes", listMarkup(member(check, "notes"), "notes"));
    if (isSet(check, "isBad")) {
        markup += titled("The latest calls between host and plug-in", callsMarkup(member(check, "calls")));
        markup += titled("Standard error", preMarkup(textOf(check, "errorOutput")));
        markup += titled("To repeat it", preMarkup(textOf(check, "repeat")));
    }
    return markup;
}

std::string checkMarkup(const Json& check) {
    const std::string id = textOf(check, "id");
    std::string summary = badge(check) + textElement("code", "", id);
    summary += textElement("span", "reason", textOf(check, "reason"));
    summary += textElement("span", "time", durationText(numberOf(check, "seconds")));
    std::string markup = "<details id=\"check-" + htmlText(id) + "\" class=\"check\"";
    markup += isSet(check, "isBad") ? " open>" : ">";
    markup += element("summary", "", summary);
    markup += textElement("p", "description", textOf(check, "description") + " (Level " +
                                                  std::to_string(integerOf(check, "level")) + ".)");
    return markup + evidenceMarkup(check) + "</details>\n";
}

// --- Groups -----------------------------------------------------------------------------------------------------

struct Group {
    std::string name;
    std::vector<const Json*> checks;        // the worst first

    std::size_t worst() const { return rankOf(*checks.front()); }
};

std::vector<Group> groupsOf(const Json& checks) {
    std::vector<Group> groups;
    for (const Json& check : checks) {
        const std::string name = textOf(check, "group");
        if (groups.empty() || groups.back().name != name) {
            groups.push_back({name, {}});
        }
        groups.back().checks.push_back(&check);
    }
    for (Group& group : groups) {
        std::stable_sort(group.checks.begin(), group.checks.end(),
                         [](const Json* a, const Json* b) { return rankOf(*a) < rankOf(*b); });
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Group& a, const Group& b) { return a.worst() < b.worst(); });
    return groups;
}

// "12 pass, 1 skip".
std::string countText(const Group& group) {
    std::string text;
    for (const std::string_view verdict : kOrder) {
        const auto count = std::count_if(group.checks.begin(), group.checks.end(),
                                         [&](const Json* check) { return textOf(*check, "verdict") == verdict; });
        if (count > 0) {
            text.append(text.empty() ? "" : ", ").append(std::to_string(count)).append(" ").append(verdict);
        }
    }
    return text;
}

std::string groupMarkup(const Group& group) {
    const bool isOpen = std::any_of(group.checks.begin(), group.checks.end(),
                                    [](const Json* check) { return isSet(*check, "isBad"); });
    std::string markup = isOpen ? "<details class=\"group\" open>" : "<details class=\"group\">";
    markup += element("summary", "",
                      badge(*group.checks.front()) + textElement("b", "", group.name) +
                          textElement("span", "reason", countText(group)));
    for (const Json* check : group.checks) {
        markup += checkMarkup(*check);
    }
    return markup + "</details>\n";
}

}  // namespace

std::string checkList(const Json& document) {
    std::string markup;
    for (const Group& group : groupsOf(member(document, "checks"))) {
        markup += groupMarkup(group);
    }
    return markup;
}

std::string badCheckLinks(const Json& document) {
    std::string markup;
    for (const Json& check : member(document, "checks")) {
        if (isSet(check, "isBad")) {
            const std::string id = htmlText(textOf(check, "id"));
            const std::string reason = textOf(check, "reason");
            markup += element("li", "", badge(check) + "<a href=\"#check-" + id + "\">" + id + "</a>" +
                                            (reason.empty() ? "" : " " + textElement("span", "reason", reason)));
        }
    }
    return markup.empty() ? "" : element("ul", "plain", markup);
}

}  // namespace importhost::validate
