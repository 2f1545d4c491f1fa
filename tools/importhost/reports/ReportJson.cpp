// The reports as JSON, with the plug-in's original numbers.
#include "importhost/reports/ClipReport.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <nlohmann/json.hpp>

namespace importhost {

namespace {

using Json = nlohmann::ordered_json;

Json resultJson(csSDK_int32 result) { return {{"code", result}, {"name", hostkit::resultName(result)}}; }

Json videoJson(const imFileInfoRec8& info, const Editor& editor) {
    const imImageInfoRec& video = info.vidInfo;
    return {
        {"width", csSDK_int32{video.imageWidth}},
        {"height", csSDK_int32{video.imageHeight}},
        {"scale", csSDK_int32{info.vidScale}},
        {"sampleSize", csSDK_int32{info.vidSampleSize}},
        {"duration", csSDK_int32{info.vidDuration}},
        {"frames", hostkit::frameCount(info)},
        {"depth", csSDK_int16{video.depth}},
        {"alpha", hostkit::alphaTypeName(video.alphaType)},
        {"fields", hostkit::fieldTypeName(video.fieldType)},
        {"pixelAspect", {csSDK_uint32{video.pixelAspectNum}, csSDK_uint32{video.pixelAspectDen}}},
        {"subType", hostkit::codeText(static_cast<csSDK_uint32>(video.subType))},
        {"subTypeName", subTypeName(editor, video.subType)},
        {"supportsAsyncIO", csSDK_int32{video.supportsAsyncIO}},
    };
}

Json soundJson(const StreamReport& stream) {
    Json labels = Json::array();
    for (const csSDK_int32 label : stream.labels) {
        labels.push_back(hostkit::channelLabelName(label));
    }
    const imAudioInfoRec7& sound = stream.info.audInfo;
    return {
        {"channels", csSDK_int32{sound.numChannels}},
        {"sampleRate", float{sound.sampleRate}},
        {"sampleType", hostkit::sampleTypeName(sound.sampleType)},
        {"sampleFrames", PrAudioSample{stream.info.audDuration}},
        {"layoutResult", resultJson(stream.layoutResult)},
        {"layout", labels},
        {"peaksResult", resultJson(stream.levels.result)},
        {"peaks", stream.levels.peaks},
    };
}

Json streamJson(const StreamReport& stream, const Editor& editor) {
    Json json = {{"result", resultJson(stream.result)}};
    if (stream.isDescribed()) {
        json["video"] = stream.info.hasVideo ? videoJson(stream.info, editor) : Json(nullptr);
        json["sound"] = stream.info.hasAudio ? soundJson(stream) : Json(nullptr);
        json["accessModes"] = csSDK_int32{stream.info.accessModes};
        json["hasDataRate"] = stream.info.hasDataRate != 0;
    }
    return json;
}

Json dataRateJson(const DataRateReport& rate) {
    return {
        {"result", resultJson(rate.result)}, {"frames", rate.frames},     {"keyFrames", rate.keyFrames},
        {"bytes", rate.bytes},               {"smallest", rate.smallest}, {"largest", rate.largest},
        {"bitsPerSecond", rate.bitsPerSecond},
    };
}

}  // namespace

Json asJson(const Editor& editor) {
    Json formats = Json::array();
    for (const auto& format : editor.started().formats) {
        if (format.result == imNoErr) {
            formats.push_back(Json{
                {"name", hostkit::fieldText(format->FormatName, 256)},
                {"shortName", hostkit::fieldText(format->FormatShortName, 32)},
                {"fileType", hostkit::codeTextHighFirst(static_cast<csSDK_uint32>(format->filetype))},
                {"extension", hostkit::fieldText(format->PlatformExtension, 256)},
            });
        }
    }
    Json subTypes = Json::array();
    for (const hostkit::SubTypesAnswer& answer : editor.started().subTypes) {
        for (const imSubTypeDescriptionRec& record : answer.records) {
            subTypes.push_back(Json{
                {"code", hostkit::codeText(static_cast<csSDK_uint32>(record.subType))},
                {"name", hostkit::toUtf8(hostkit::fieldText(record.subTypeName, 256))},
            });
        }
    }
    return {
        {"plugin", hostkit::toUtf8(editor.pluginPath())},
        {"priority", csSDK_int32{editor.started().init->priority}},
        {"formats", formats},
        {"subTypes", subTypes},
    };
}

Json asJson(const ClipReport& report, const Editor& editor) {
    Json json = {{"file", hostkit::toUtf8(report.path)}, {"open", resultJson(report.openResult)}};
    if (!report.isGood()) {
        json["refusal"] = report.refusal;
    }
    json["advice"] = report.advice;
    json["streams"] = Json::array();
    for (const StreamReport& stream : report.streams) {
        json["streams"].push_back(streamJson(stream, editor));
    }
    json["pixelFormats"] = Json::array();
    for (const PrPixelFormat format : report.pixelFormats) {
        json["pixelFormats"].push_back(
            Json{{"code", hostkit::codeText(format)}, {"name", hostkit::pixelFormatName(format)}});
    }
    json["analysis"] = {{"result", resultJson(report.analysisResult)}, {"text", report.analysis}};
    json["dataRate"] = dataRateJson(report.dataRate);
    return json;
}

}  // namespace importhost
