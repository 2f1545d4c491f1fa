#include "importhost/validate/page/FileCards.h"

#include "importhost/reports/ClipReport.h"
#include "importhost/validate/page/FactList.h"
#include "importhost/validate/page/WaveformDrawing.h"
#include "importhost/validate/report/JsonAccess.h"

#include <cstdio>

namespace importhost::validate {

namespace {

std::string resultText(const Json& result) {
    return textOf(result, "name") + " (" + std::to_string(integerOf(result, "code")) + ")";
}

bool isGood(const Json& result) { return result.is_object() && integerOf(result, "code") == 0; }

std::string oneDecimal(double value) {
    char text[64] = {};
    std::snprintf(text, sizeof(text), "%.1f", value);
    return text;
}

std::string number(const Json& json, std::string_view key) { return std::to_string(integerOf(json, key)); }

// --- Facts ------------------------------------------------------------------------------------------------------

std::string picturesText(const Json& video) {
    const double scale = numberOf(video, "scale");
    const double seconds = scale > 0.0 ? numberOf(video, "duration") / scale : 0.0;
    return number(video, "width") + " × " + number(video, "height") + ", " +
           rateText(integerOf(video, "scale"), integerOf(video, "sampleSize")) + ", " + number(video, "frames") +
           " frames, " + timeText(seconds);
}

std::string depthText(const Json& video) {
    const Json& aspect = member(video, "pixelAspect");
    std::string text = number(video, "depth") + " bits, " + textOf(video, "alpha") + ", " + textOf(video, "fields");
    if (aspect.is_array() && aspect.size() == 2 && aspect[0].is_number_integer() && aspect[1].is_number_integer()) {
        text.append(", pixel aspect ").append(aspect[0].dump()).append(":").append(aspect[1].dump());
    }
    return text;
}

void addVideo(FactList& facts, const Json& video) {
    facts.add("Pictures", picturesText(video));
    facts.add("", depthText(video));
    facts.addMarkup("Codec", textElement("code", "", textOf(video, "subType")) + " " +
                                 htmlText(textOf(video, "subTypeName")));
}

std::string layoutText(const Json& sound) {
    if (!isGood(member(sound, "layoutResult"))) {
        return resultText(member(sound, "layoutResult"));
    }
    std::string text;
    for (const Json& label : member(sound, "layout")) {
        text.append(text.empty() ? "" : ", ").append(label.is_string() ? label.get<std::string>() : "?");
    }
    return text;
}

void addSound(FactList& facts, const Json& sound, const std::string& name) {
    const std::int64_t channels = integerOf(sound, "channels");
    char rate[64] = {};
    std::snprintf(rate, sizeof(rate), "%g Hz", numberOf(sound, "sampleRate"));
    facts.add(name, std::to_string(channels) + (channels == 1 ? " channel, " : " channels, ") + rate + ", " +
                        textOf(sound, "sampleType") + ", " + number(sound, "sampleFrames") + " sample frames");
    facts.add("", "layout: " + layoutText(sound));
}

void addStreams(FactList& facts, const Json& streams) {
    std::size_t index = 0;
    for (const Json& stream : streams) {
        const std::string name = streams.size() == 1 ? "" : " of stream " + std::to_string(index);
        if (member(stream, "video").is_object()) {
            addVideo(facts, member(stream, "video"));
        }
        if (member(stream, "sound").is_object()) {
            addSound(facts, member(stream, "sound"), "Sound" + name);
        }
        if (!stream.contains("video")) {
            facts.add("Describing" + name, resultText(member(stream, "result")));
        }
        ++index;
    }
}

void addPixelFormats(FactList& facts, const Json& formats) {
    std::string markup;
    for (const Json& format : formats) {
        markup += textElement("li", "", textOf(format, "code") + "  " + textOf(format, "name"));
    }
    facts.addMarkup("Pixel formats", markup.empty() ? "" : element("ul", "plain", markup));
}

void addDataRate(FactList& facts, const Json& rate) {
    if (!isGood(member(rate, "result"))) {
        return;
    }
    facts.add("Data rate", oneDecimal(numberOf(rate, "bitsPerSecond") / 1e6) + " Mbit/s, " +
                               number(rate, "keyFrames") + " key frames, from " + number(rate, "smallest") + " to " +
                               number(rate, "largest") + " bytes a frame");
}

void addAnalysis(FactList& facts, const Json& analysis) {
    std::string text = textOf(analysis, "text");
    text.erase(text.find_last_not_of("\r\n ") + 1);
    if (isGood(member(analysis, "result")) && !text.empty()) {
        facts.addMarkup("Analysis", textElement("pre", "", text));
    }
}

void addFolderEntry(FactList& facts, const Json& file) {
    const std::string modified = textOf(file, "modified");
    facts.addCode("Path", textOf(file, "path"));
    facts.add("Size", sizeText(numberOf(file, "bytes")) + (modified.empty() ? "" : ", of " + modified + " UTC"));
}

std::string factsMarkup(const Json& file) {
    FactList facts;
    // A sample is gone with the run, and as old as it.
    if (textOf(file, "purpose").empty()) {
        addFolderEntry(facts, file);
    }
    const Json& told = member(file, "facts");
    if (told.is_object()) {
        if (!isGood(member(told, "open"))) {
            facts.add("Opening", resultText(member(told, "open")));
        }
        addStreams(facts, member(told, "streams"));
    }
    return facts.markup();
}

std::string moreFactsMarkup(const Json& told) {
    FactList facts;
    addPixelFormats(facts, member(told, "pixelFormats"));
    addDataRate(facts, member(told, "dataRate"));
    addAnalysis(facts, member(told, "analysis"));
    const std::string markup = facts.markup();
    return markup.empty() ? "" : element("details", "more", textElement("summary", "", "Formats, data rate, analysis") +
                                                                markup);
}

// --- Pictures and sound -----------------------------------------------------------------------------------------

// Base64 and nothing else may stand in the picture's address.
bool isBase64(const std::string& text) {
    constexpr char kAll[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=";
    return !text.empty() && text.find_first_not_of(kAll) == std::string::npos;
}

std::string sheetMarkup(const Json& sheet) {
    if (!sheet.is_object()) {
        return {};
    }
    std::string undelivered;
    for (const Json& frame : member(sheet, "frames")) {
        if (!isSet(frame, "delivered")) {
            undelivered += textElement("p", "problem", "Frame " + textOf(frame, "frame") + " was not delivered: " +
                                                           textOf(frame, "result") + ".");
        }
    }
    const std::string error = textOf(sheet, "error");
    if (!error.empty()) {
        return textElement("p", "problem", "No pictures: " + error);
    }
    const std::string png = textOf(sheet, "png");
    if (!isBase64(png)) {
        return undelivered;
    }
    return element("div", "sheet",
                   "<img alt=\"Frames of the file, spread evenly\" width=\"" + number(sheet, "width") +
                       "\" height=\"" + number(sheet, "height") + "\" src=\"data:image/png;base64," + png + "\">") +
           undelivered;
}

std::string problemsMarkup(const Json& file) {
    std::string markup;
    if (const std::string problem = textOf(file, "problem"); !problem.empty()) {
        markup += textElement("p", "problem", problem);
        const std::string output = textOf(file, "errorOutput");
        markup += output.empty() ? "" : textElement("pre", "", output);
    }
    std::string uneven;
    for (const Json& sentence : member(file, "leftUneven")) {
        uneven += textElement("p", "", sentence.is_string() ? sentence.get<std::string>() : "");
    }
    return uneven.empty() ? markup : markup + element("div", "problem", uneven);
}

}  // namespace

std::string fileCard(const Json& file, bool isOpen) {
    std::string markup = isOpen ? "<details class=\"card\" open>" : "<details class=\"card\">";
    markup += element("summary", "", textElement("b", "", textOf(file, "name")) +
                                         textElement("span", "reason", textOf(file, "purpose")));
    markup += problemsMarkup(file);
    markup += sheetMarkup(member(file, "sheet"));
    for (const Json& waveform : member(file, "waveforms")) {
        markup += waveformMarkup(waveform, member(file, "waveforms").size() > 1);
    }
    return markup + factsMarkup(file) + moreFactsMarkup(member(file, "facts")) + "</details>\n";
}

}  // namespace importhost::validate
