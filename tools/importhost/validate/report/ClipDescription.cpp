#include "importhost/validate/report/ClipDescription.h"

#include "importhost/pictures/PngFile.h"
#include "importhost/reports/ClipReport.h"
#include "importhost/reports/ClipSheet.h"
#include "importhost/sound/Waveform.h"
#include "importhost/validate/report/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace importhost::validate {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kTiles = 10;
constexpr int kTileColumns = 5;
constexpr int kTileWidth = 200;                 // pixels
constexpr std::int64_t kWaveColumns = 400;

Json framesJson(const std::vector<SheetTile>& tiles) {
    Json frames = Json::array();
    for (const SheetTile& tile : tiles) {
        frames.push_back(Json{{"frame", tile.label}, {"time", tile.time}, {"result", tile.note},
                              {"delivered", tile.picture.has_value()}});
    }
    return frames;
}

Json sheetJson(Editor& editor, const std::filesystem::path& path) {
    try {
        VideoClip clip(editor, path);
        const imImageInfoRec& video = clip.info().vidInfo;
        const SheetLayout layout{kTileColumns, kTileWidth,
                                 tileHeightFor(kTileWidth, video.imageWidth, video.imageHeight)};
        const std::vector<SheetTile> tiles = sheetTiles(clip, kTiles);
        const Picture sheet = drawSheet("", "", tiles, layout);
        return {{"width", sheet.width},
                {"height", sheet.height},
                {"frames", framesJson(tiles)},
                {"png", base64(pngBytes(sheet))}};
    } catch (const std::exception& error) {
        return {{"error", error.what()}};
    }
}

// A thousandth of full scale is finer than any picture; what is no finite number has no place in JSON.
double rounded(float value) {
    return std::round(static_cast<double>(std::clamp(value, -1e6f, 1e6f)) * 1000.0) / 1000.0;
}

Json channelJson(const std::string& name, const std::vector<Extent>& columns) {
    Json low = Json::array();
    Json high = Json::array();
    float peak = 0.0f;
    for (const Extent& extent : columns) {
        low.push_back(rounded(extent.low));
        high.push_back(rounded(extent.high));
        peak = std::max({peak, extent.high, -extent.low});
    }
    return {{"name", name}, {"peak", decibelText(peak)}, {"low", low}, {"high", high}};
}

Json waveformJson(Editor& editor, const ClipReport& report, std::size_t stream) {
    Json json = {{"stream", stream}};
    try {
        SoundReader clip(editor, report.path, static_cast<csSDK_int32>(stream));
        const Waveform waveform = waveformOf(clip, kWaveColumns);
        json["seconds"] = static_cast<double>(clip.sampleFrames()) / clip.sampleRate();
        json["sampled"] = waveform.isSampled;
        json["channels"] = Json::array();
        for (std::size_t channel = 0; channel < waveform.channels.size(); ++channel) {
            json["channels"].push_back(
                channelJson(channelName(report.streams[stream], channel), waveform.channels[channel]));
        }
        json["error"] = waveform.failure;
    } catch (const std::exception& error) {
        json["error"] = error.what();
    }
    return json;
}

}  // namespace

void describeClip(Editor& editor, const std::filesystem::path& path, const std::function<void(const Json&)>& told) {
    const ClipReport report = reportOf(editor.session(), path);
    Json description = {{"facts", asJson(report, editor)}};
    told(description);
    if (!report.isGood()) {
        return;
    }
    if (report.streams.front().info.hasVideo) {
        description["sheet"] = sheetJson(editor, path);
        told(description);
    }
    description["waveforms"] = Json::array();
    for (std::size_t stream = 0; stream < report.streams.size(); ++stream) {
        if (report.streams[stream].isDescribed() && report.streams[stream].info.hasAudio) {
            description["waveforms"].push_back(waveformJson(editor, report, stream));
            told(description);
        }
    }
}

}  // namespace importhost::validate
