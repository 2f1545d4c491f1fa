// importhost sheet: a contact sheet of a clip.
#include "importhost/clips/VideoClip.h"
#include "importhost/commands/Command.h"
#include "importhost/console/Progress.h"
#include "importhost/pictures/PngFile.h"
#include "importhost/reports/ClipReport.h"
#include "importhost/reports/ClipSheet.h"

#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <stdexcept>

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
        app.add_option("--columns", m_layout.columns, "Frames per row")
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
        clip.requireFrames();
        const imImageInfoRec& video = clip.info().vidInfo;
        m_layout.tileHeight = tileHeightFor(m_layout.tileWidth, video.imageWidth, video.imageHeight);
        Progress progress("frames", sheetTileCount(clip, m_count));
        const std::vector<SheetTile> tiles = sheetTiles(clip, m_count, [&progress] { progress.step(); });
        writePng(drawSheet(hostkit::toUtf8(path.filename()), subtitleOf(clip, editor), tiles, m_layout),
                 hostkit::pathFromUtf8(m_out));
        const auto failed = std::count_if(tiles.begin(), tiles.end(),
                                          [](const SheetTile& tile) { return !tile.picture.has_value(); });
        if (failed > 0) {
            throw std::runtime_error(std::to_string(failed) + " of " + std::to_string(tiles.size()) +
                                     " frames failed; the sheet shows their results.");
        }
        return kGood;
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

    std::string m_file;
    std::string m_out;
    int m_count = 12;
    SheetLayout m_layout;
};

}  // namespace

std::unique_ptr<Command> makeSheetCommand() { return std::make_unique<SheetCommand>(); }

}  // namespace importhost
