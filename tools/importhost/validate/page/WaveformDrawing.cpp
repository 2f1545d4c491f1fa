#include "importhost/validate/page/WaveformDrawing.h"

#include "importhost/reports/ClipReport.h"
#include "importhost/validate/page/Html.h"
#include "importhost/validate/report/JsonAccess.h"

#include <algorithm>
#include <cstdio>

namespace importhost::validate {

namespace {

// A lane is a number of columns wide and so high, full scale from 0 to its height.
constexpr double kLaneHeight = 100.0;

double columnValue(const Json& columns, std::size_t at) {
    return columns[at].is_number() ? std::clamp(columns[at].get<double>(), -1.0, 1.0) : 0.0;
}

void addPoint(std::string& path, std::size_t x, double value) {
    char text[64] = {};
    std::snprintf(text, sizeof(text), "%c%zu %.1f", path.empty() ? 'M' : 'L', x, (1.0 - value) * kLaneHeight / 2.0);
    path += text;
}

// Along the upper edge and back along the lower one.
std::string outline(const Json& low, const Json& high) {
    std::string path;
    for (std::size_t x = 0; x < high.size(); ++x) {
        addPoint(path, x, columnValue(high, x));
    }
    for (std::size_t x = low.size(); x > 0; --x) {
        addPoint(path, x - 1, columnValue(low, x - 1));
    }
    return path + "Z";
}

std::string laneMarkup(const Json& channel) {
    const Json& low = member(channel, "low");
    const Json& high = member(channel, "high");
    std::string markup = textElement("span", "name", textOf(channel, "name"));
    if (low.is_array() && high.is_array() && !high.empty()) {
        markup += "<svg viewBox=\"0 0 " + std::to_string(std::max<std::size_t>(high.size() - 1, 1)) +
                  " 100\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"Waveform\"><path d=\"" +
                  outline(low, high) + "\"/></svg>\n";
    } else {
        markup += element("span", "", "");
    }
    return markup + textElement("span", "peak", textOf(channel, "peak"));
}

std::string captionOf(const Json& waveform, bool isOneOfSeveral) {
    std::string caption = "Sound";
    if (isOneOfSeveral) {
        caption.append(" of stream ").append(std::to_string(integerOf(waveform, "stream")));
    }
    if (const double seconds = numberOf(waveform, "seconds"); seconds > 0.0) {
        caption.append(", ").append(timeText(seconds));
    }
    return caption + (isSet(waveform, "sampled") ? ", the start of each column looked at" : "");
}

}  // namespace

std::string waveformMarkup(const Json& waveform, bool isOneOfSeveral) {
    std::string lanes;
    for (const Json& channel : member(waveform, "channels")) {
        lanes += laneMarkup(channel);
    }
    std::string markup = textElement("figcaption", "", captionOf(waveform, isOneOfSeveral));
    markup += lanes.empty() ? "" : element("div", "lanes", lanes);
    const std::string error = textOf(waveform, "error");
    return element("figure", "", markup) + (error.empty() ? "" : textElement("p", "problem", error));
}

}  // namespace importhost::validate
