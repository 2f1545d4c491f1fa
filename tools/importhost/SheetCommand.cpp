// importhost sheet: a contact sheet of a clip.
#include "importhost/ClipReport.h"
#include "importhost/Command.h"
#include "importhost/ContactSheet.h"
#include "importhost/PngFile.h"
#include "importhost/Progress.h"
#include "importhost/VideoClip.h"

#include "hostkit/Names.h"
#include "hostkit/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace importhost {

namespace {

class SheetCommand : public EditorCommand {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_file, "The clip")->required()->type_name("");
        app.add_option("-o,--out", m_out, "The PNG file to write")->required()->type_name("PNG");
        app.add_option("--count", m_count, "Frames to show, spread evenly over the clip")
            ->type_name("N")
            ->check(CLI::Range(1, 400).description(""))
            ->capture_default_str();
        app.add_option("--columns", m_layout.columns, "Frames side by side")
            ->type_name("N")
            ->check(CLI::Range(1, 20).description(""))
            ->capture_default_str();
        app.add_option("--width", m_layout.tileWidth, "Width of each picture in pixels")
            ->type_name("PIXELS")
            ->check(CLI::Range(16, 1920).description(""))
            ->capture_default_str();
    }

    ExitCode runWith(Editor& editor) override {
        const std::filesystem::path path = hostkit::pathFromUtf8(m_file);
        VideoClip clip(editor, path);
        const imImageInfoRec& video = clip.info().vidInfo;
        m_layout.tileHeight = tileHeightFor(m_layout.tileWidth, video.imageWidth, video.imageHeight);
        const std::vector<SheetTile> tiles = makeTiles(clip);
        writePng(drawSheet(hostkit::toUtf8(path.filename()), subtitleOf(clip, editor), tiles, m_layout),
                 hostkit::pathFromUtf8(m_out));
        const bool allThere = std::all_of(tiles.begin(), tiles.end(),
                                          [](const SheetTile& tile) { return tile.picture.has_value(); });
        return allThere ? kGood : kFailed;
    }

private:
    static std::string subtitleOf(const VideoClip& clip, const Editor& editor) {
        const imFileInfoRec8& info = clip.info();
        const std::string subType = subTypeName(editor, info.vidInfo.subType);
        std::string text = std::to_string(info.vidInfo.imageWidth);
        text.append(" x ").append(std::to_string(info.vidInfo.imageHeight)).append("   ").append(rateText(info));
        text.append("   ").append(std::to_string(clip.frameCount())).append(" frames   ");
        return text.append(timeText(secondsOf(info))).append("   ").append(subType);
    }

    static PrPixelFormat pictureFormatOf(const VideoClip& clip) {
        const auto& formats = clip.formats();
        const auto found = std::find_if(formats.begin(), formats.end(), isPictureFormat);
        if (found == formats.end()) {
            throw ClipFailure("No picture can be made of any pixel format that is offered for this clip.");
        }
        return *found;
    }

    std::vector<SheetTile> makeTiles(VideoClip& clip) const {
        const PrPixelFormat format = pictureFormatOf(clip);
        const std::int64_t frames = std::max<std::int64_t>(clip.frameCount(), 1);
        const std::int64_t count = std::min<std::int64_t>(m_count, frames);
        Progress progress("frames", count);
        std::vector<SheetTile> tiles;
        for (std::int64_t i = 0; i < count; ++i) {
            tiles.push_back(makeTile(clip, i * frames / count, format));
            progress.step();
        }
        return tiles;
    }

    static SheetTile makeTile(VideoClip& clip, std::int64_t index, PrPixelFormat format) {
        const hostkit::FrameAnswer answer = clip.frame(index, format);
        SheetTile tile{std::nullopt, std::to_string(index), timeText(clip.secondsOf(index)),
                       std::string(hostkit::resultName(answer.result))};
        if (const auto view = answer.frame.view()) {
            tile.picture = pictureOf(*view);
        }
        return tile;
    }

    std::string m_file;
    std::string m_out;
    int m_count = 12;
    SheetLayout m_layout;
};

}  // namespace

std::unique_ptr<Command> makeSheetCommand() { return std::make_unique<SheetCommand>(); }

}  // namespace importhost
