#include "replay/MessageDiff.h"

#include "replay/LineScan.h"

#include <algorithm>
#include <array>

namespace replay {

namespace {

// Longer lists are printed whole, without finding common parts: that would take time proportional to their product.
constexpr std::size_t kMostCompared = 2000;

constexpr std::array<std::string_view, 2> kSessionMessages = {"Starting decompression: ",
                                                              "Pixel format changed, ending decompression"};

std::string_view pointerText(std::string_view pointer) {
    const bool isNull = pointer == "(nil)" || pointer.find_first_not_of("0x") == std::string_view::npos;
    return isNull ? "<null>" : "<pointer>";
}

// The start of a printed pointer at the end of the message, if any.
std::optional<std::size_t> pointerStart(const std::string& message) {
    if (message.starts_with("outFrame: ")) {
        return 10;
    }
    const std::size_t at = message.rfind("', ptr: ");
    return message.starts_with("Acquiring suite: ") && at != std::string::npos ? std::optional(at + 8) : std::nullopt;
}

// Planes of a frame are logged as "{address,bytes,size}".
void dropAddresses(std::string& message) {
    std::size_t start = 0;
    while ((start = message.find('{', start)) != std::string::npos) {
        const std::size_t end = message.find_first_not_of("0123456789", ++start);
        if (end != std::string::npos && message[end] == ',' && end > start + 1) {
            message.replace(start, end - start, "<pointer>");
        }
    }
}

std::vector<std::string> comparableOf(const std::vector<std::string>& messages, bool inBackground) {
    std::vector<std::string> kept;
    for (const std::string& message : messages) {
        const bool isOfSession = std::ranges::any_of(
            kSessionMessages, [&message](std::string_view start) { return message.starts_with(start); });
        if (!inBackground || !isOfSession) {
            kept.push_back(comparable(message));
        }
    }
    return kept;
}

using Lines = std::vector<std::string>;

// Lengths of the longest common subsequence after each pair of positions.
class CommonLengths {
public:
    CommonLengths(const Lines& then, const Lines& now)
        : m_columns(now.size() + 1), m_lengths((then.size() + 1) * m_columns, 0) {
        for (std::size_t i = then.size(); i-- > 0;) {
            for (std::size_t j = now.size(); j-- > 0;) {
                m_lengths[i * m_columns + j] =
                    then[i] == now[j] ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
            }
        }
    }
    std::size_t at(std::size_t i, std::size_t j) const { return m_lengths[i * m_columns + j]; }

private:
    std::size_t m_columns;
    std::vector<std::size_t> m_lengths;
};

void addGone(MessageDiff& diff, const std::string& line) {
    diff.gone.push_back(line);
    diff.lines.push_back("- " + line);
}

void addAdded(MessageDiff& diff, const std::string& line) {
    diff.added.push_back(line);
    diff.lines.push_back("+ " + line);
}

void addDiff(MessageDiff& diff, const Lines& then, const Lines& now) {
    if (then == now) {
        return;
    }
    if (then.size() > kMostCompared || now.size() > kMostCompared) {
        std::ranges::for_each(then, [&diff](const std::string& line) { addGone(diff, line); });
        std::ranges::for_each(now, [&diff](const std::string& line) { addAdded(diff, line); });
        return;
    }
    const CommonLengths common(then, now);
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < then.size() || j < now.size()) {
        if (i < then.size() && j < now.size() && then[i] == now[j]) {
            ++i;
            ++j;
        } else if (j == now.size() || (i < then.size() && common.at(i + 1, j) >= common.at(i, j + 1))) {
            addGone(diff, then[i++]);
        } else {
            addAdded(diff, now[j++]);
        }
    }
}

}  // namespace

std::string comparable(const std::string& message) {
    if (const auto start = pointerStart(message)) {
        return message.substr(0, *start).append(pointerText(std::string_view(message).substr(*start)));
    }
    if (message.starts_with("m_filePathUtf8: '")) {
        return "m_filePathUtf8: '<file>'";
    }
    if (const std::size_t end = message.rfind("', stream: "); message.starts_with("Open: '") && end != std::string::npos) {
        return "Open: '<file>" + message.substr(end);
    }
    std::string result = message;
    if (message.starts_with("Decompress failed: ")) {
        dropAddresses(result);
    }
    return result;
}

MessageDiff compareMessages(const LoggedCall& then, const LoggedCall& now, bool decodeIsWhole) {
    MessageDiff diff;
    addDiff(diff, comparableOf(then.messages, false), comparableOf(now.messages, false));
    const Lines decodeThen = comparableOf(then.decode, true);
    Lines decodeNow = comparableOf(now.decode, true);
    if (!decodeIsWhole && decodeThen.size() < decodeNow.size()) {
        decodeNow.resize(decodeThen.size());
    }
    addDiff(diff, decodeThen, decodeNow);
    return diff;
}

}  // namespace replay
