// Pictures of pages, and the sheets that pictures are put on.
#include "replay/picture/Storyboard.h"

#include "replay/picture/Image.h"
#include "replay/picture/PageRenderer.h"
#include "replay/picture/SheetCanvas.h"
#include "scene/Page.h"
#include "tests/replay/PictureFixtures.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using namespace pictures;

// A file of a drawing as its pixels.
replay::Image ReadPng(const std::string& path) {
    cairo_surface_t* surface = cairo_image_surface_create_from_png(path.c_str());
    replay::Image image;
    if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
        image.width = cairo_image_surface_get_width(surface);
        image.height = cairo_image_surface_get_height(surface);
        const unsigned char* row = cairo_image_surface_get_data(surface);
        for (int y = 0; y < image.height; ++y, row += cairo_image_surface_get_stride(surface)) {
            const auto* pixels = reinterpret_cast<const std::uint32_t*>(row);
            image.pixels.insert(image.pixels.end(), pixels, pixels + image.width);
        }
    }
    cairo_surface_destroy(surface);
    return image;
}

// A folder of its own for each test, removed at the end.
class DrawingFiles : public testing::Test {
protected:
    DrawingFiles() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        m_folder =
            std::filesystem::temp_directory_path() / (std::string(test->name()) + "-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    ~DrawingFiles() override { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] std::string PathOf(const std::string& name) const { return (m_folder / name).string(); }
    [[nodiscard]] static std::string Read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    // Draws a page into a picture of 160 x 100 pixels.
    [[nodiscard]] replay::Image DrawPage(const scene::Page& page, const viewer::ViewSnapshot& view) const {
        replay::SheetCanvas canvas(replay::SheetFormat::Png, 160, 100);
        replay::PageRenderer(page).Draw(canvas.GetContext(), view, {0, 0, 160, 100});
        const std::string path = PathOf("page.png");
        std::ofstream(path, std::ios::binary) << canvas.Finish();
        return ReadPng(path);
    }

private:
    std::filesystem::path m_folder;
};

using PageRenderer = DrawingFiles;

TEST_F(PageRenderer, ShowsThePartOfThePageThatThePlacementAsksFor) {
    scene::Page page;
    page.areas = {{scene::MakeRectangle(0, 0, 8, 5), Red},
                  {scene::MakeRectangle(-8, 0, 0, 5), Green},
                  {scene::MakeRectangle(-8, -5, 0, 0), Blue},
                  {scene::MakeRectangle(0, -5, 8, 0), Yellow}};
    struct Row {
        const char* name;
        dg::Location placement;
        double width;
        std::array<const char*, 4> corners;  // upper right, upper left, lower left, lower right
    };
    const Row rows[] = {
        {"whole page", At(0, 0, 0), 16, {"red", "green", "blue", "yellow"}},
        {"moved to the upper right", At(5, 3, 0), 16, {"pale", "pale", "yellow", "pale"}},
        {"quarter turn", {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {}}, 4, {"green", "blue", "yellow", "red"}},
        {"extremely near", At(3, 2, 0), 1e-9, {"red", "red", "red", "red"}},
    };
    for (const Row& row : rows) {
        viewer::ViewSnapshot view;
        view.kind = "drawingview";
        view.placement = row.placement;
        view.orthoWidth = row.width;
        const replay::Image image = DrawPage(page, view);
        ASSERT_EQ(image.width, 160);
        const std::array corners = {NameOf(image.At(120, 20)), NameOf(image.At(40, 20)), NameOf(image.At(40, 90)),
                                    NameOf(image.At(120, 90))};
        EXPECT_TRUE(std::equal(corners.begin(), corners.end(), row.corners.begin()))
            << row.name << ": " << corners[0] << corners[1] << corners[2] << corners[3];
    }
}

TEST_F(PageRenderer, ADegenerateViewIsTheDesk) {
    const scene::Page page = scene::MakePage("drawingview");
    for (const auto& [width, x] : {std::pair{0.0, 0.0}, {-1.0, 0.0}, {NaN, 0.0}, {Infinity, NaN}, {16.0, 1e308}}) {
        viewer::ViewSnapshot view;
        view.placement = At(x, 0, 0);
        view.orthoWidth = width;
        const replay::Image image = DrawPage(page, view);
        EXPECT_EQ(std::count(image.pixels.begin(), image.pixels.end(), image.pixels.at(0)), 16000) << width;
    }
}

replay::Sheet MakeSheet(std::size_t panels) {
    replay::Sheet sheet;
    sheet.title = "Turning <a> \"part\" & more";
    sheet.subtitle = "two moments";
    sheet.model = MakeModel({MakePatch({0, 0, 0}, 3, Red)});
    for (std::size_t i = 0; i < panels; ++i) {
        replay::Panel panel;
        panel.view = MakeView(At(0, 0, 10));
        panel.heading = "Spin";
        panel.time = "0.4 s";
        panel.caption = "turned 74 degrees to the right";
        panel.view.statusText = "Touch: navigate";
        sheet.panels.push_back(panel);
    }
    return sheet;
}

void WriteStoryboard(const replay::Sheet& sheet, const std::string& path) {
    std::ofstream(path, std::ios::binary) << replay::DrawStoryboard(sheet, path);
}

using Storyboard = DrawingFiles;

TEST_F(Storyboard, SvgKeepsItsTextAndEmbedsThePictures) {
    const std::string path = PathOf("story.svg");
    replay::Sheet sheet = MakeSheet(2);
    sheet.panels[0].caption =
        "moved 25 px right (58 px along the way), zoomed out 1.42 times (width 14.9 to 21.1 units), "
        "turned 30 degrees counter-clockwise, band of 357 x 210 px from (467, 511) px, selected flange";
    sheet.panels[0].trails = {{0, {{80, 50}}, true}, {1, {{90, 50}}, false}};
    WriteStoryboard(sheet, path);
    const std::string svg = Read(path);
    EXPECT_NE(svg.find("Turning &lt;a&gt; &quot;part&quot; &amp; more"), std::string::npos);
    for (const char* text :
         {">two moments<", ">Spin<", ">0.4 s<", ">turned 74 degrees to the right<", ">Touch: navigate<",
          ">finger on the screen<", ">has just lifted<", "selected flange<", "data:image/png;base64,"}) {
        EXPECT_NE(svg.find(text), std::string::npos) << text;
    }
    EXPECT_EQ(svg.find("\u2026"), std::string::npos) << "a caption is cut";
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST_F(Storyboard, SvgHoldsAPageOnce) {
    replay::Sheet sheet = MakeSheet(8);
    for (std::size_t i = 0; i < sheet.panels.size(); ++i) {
        sheet.panels[i].view.kind = "drawingview";
        sheet.panels[i].view.orthoWidth = 16 - static_cast<double>(i);
    }
    WriteStoryboard(sheet, PathOf("story.svg"));
    WriteStoryboard(sheet, PathOf("story.png"));
    const std::string svg = Read(PathOf("story.svg"));
    EXPECT_LT(svg.size(), Read(PathOf("story.png")).size());
    // The whole page begins at the first panel's corner.
    double x = 0;
    double y = 0;
    const std::size_t use = std::min(svg.find("<use "), svg.size());
    const std::size_t matrix = std::min(svg.find("matrix(", use), svg.size());
    EXPECT_EQ(std::sscanf(svg.c_str() + matrix, "matrix(%*f,%*f,%*f,%*f,%lf,%lf)", &x, &y), 2);
    EXPECT_NEAR(std::hypot(x - 28, y - 104), 0, 0.5);
}

TEST_F(Storyboard, PngShowsThePicturesWithWhatStandsOverThem) {
    // Three panels of 502 pixels; 160 x 100 views fill pictures of 502 x 314 whose upper edge is at 104.
    replay::Sheet sheet = MakeSheet(3);
    sheet.panels[1].trails = {{1, {{140, 80}}, true}};
    sheet.panels[2].view.rubberBand = viewer::RubberBand{10, 10, 60, 90};
    sheet.panels[0].trails = {{1, {{80, 50}}, true}, {3, {{70, 50}}, false}};
    const std::string path = PathOf("story.png");
    WriteStoryboard(sheet, path);
    const replay::Image image = ReadPng(path);
    ASSERT_EQ(image.width, 1600);
    const auto pixelOf = [&](int panel, double x, double y) {
        return image.At(28 + panel * 520 + static_cast<int>(x / 160 * 502),
                        104 + static_cast<int>((100 - y) / 100 * 314));
    };
    EXPECT_EQ(NameOf(pixelOf(2, 90, 50)), "red");
    EXPECT_NE(pixelOf(1, 142, 82), pixelOf(0, 142, 82)) << "the finger";
    for (const double x : {80, 70}) {
        EXPECT_EQ(NameOf(pixelOf(0, x - 2, 52)), "pale") << "the ground of a finger's number, on a dark part";
    }
    EXPECT_NE(pixelOf(2, 20, 80), pixelOf(0, 20, 80)) << "the rubber band";
    EXPECT_EQ(pixelOf(2, 140, 20), pixelOf(0, 140, 20)) << "nothing else";
}

TEST_F(Storyboard, DrawsAnythingAViewCanBe) {
    replay::Sheet sheet = MakeSheet(1);
    replay::Panel panel = sheet.panels.front();
    panel.caption = "bad \xFF\xC3( bytes, \x01 controls, \xE2\x82\xAC and " + std::string(5000, 'w');
    panel.trails = {{-3, {{NaN, 0}, {-2147483648.0, 2147483647.0}, {1e308, -1e308}, {5, 5}}, true},
                    {2147483647, {}, false},
                    {12, {{5, 5}, {50, 50}, {50, 50}}, false}};
    panel.view.rubberBand = viewer::RubberBand{-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647};
    panel.view.contextMenu = "";
    panel.view.contextMenuAt = {159, 0};
    sheet.panels.push_back(panel);
    for (const char* kind : {"", "imageview", "unheard of"}) {
        panel.view.kind = kind;
        sheet.panels.push_back(panel);
    }
    for (const std::uint32_t width : {0U, 4000000000U}) {
        panel.view.width = width;
        panel.view.height = 1;
        sheet.panels.push_back(panel);
    }
    sheet.model = nullptr;
    const std::string path = PathOf("story.svg");
    WriteStoryboard(sheet, path);
    EXPECT_NE(Read(path).find("bad \?\?( bytes, ? controls, \xE2\x82\xAC and"), std::string::npos);
    WriteStoryboard(replay::Sheet{}, PathOf("empty.png"));
    EXPECT_EQ(ReadPng(PathOf("empty.png")).width, 1600);
}

TEST(StoryboardFaults, NameTheFile) {
    struct Row {
        std::string path;
        std::size_t panels;
        const char* fault;
    };
    for (const Row& row : {Row{"story.pdf", 1, "a .svg or a .png file"}, Row{"tall.png", 400, "cannot be drawn"}}) {
        try {
            static_cast<void>(replay::DrawStoryboard(MakeSheet(row.panels), row.path));
            ADD_FAILURE() << row.path;
        } catch (const std::runtime_error& fault) {
            EXPECT_EQ(std::string(fault.what()).rfind(row.path + ": ", 0), 0U) << fault.what();
            EXPECT_NE(std::string(fault.what()).find(row.fault), std::string::npos) << fault.what();
        }
    }
}

}  // namespace
