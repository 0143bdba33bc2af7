// Recording into a metafile context, playing it back, the clipboard, and the three file
// kinds written and read again.
#include <gtest/gtest.h>

#include <windows.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <GwGC.h>
#include <GwGCWMF.h>

#include "GraphicsTesting.h"

using namespace testing_graphics;

namespace {

int const kWidth = 120;
int const kHeight = 100;

// A file name in the temporary folder, removed when the test ends.
class TempFile {
public:
    explicit TempFile(char const* name) {
        char folder[MAX_PATH] = {};
        GetTempPathA(MAX_PATH, folder);
        mPath = std::string(folder) + name;
        DeleteFileA(mPath.c_str());
    }
    ~TempFile() { DeleteFileA(mPath.c_str()); }
    char const* c_str() const { return mPath.c_str(); }
    std::string const& path() const { return mPath; }

private:
    std::string mPath;
};

std::vector<unsigned char> readFile(std::string const& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), {});
}

void writeFile(std::string const& path, std::vector<unsigned char> const& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<char const*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

std::uint16_t word(std::vector<unsigned char> const& bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | (bytes[offset + 1] << 8));
}

std::uint32_t dword(std::vector<unsigned char> const& bytes, std::size_t offset) {
    return word(bytes, offset) | (static_cast<std::uint32_t>(word(bytes, offset + 2)) << 16);
}

// The test drawing: lines, a filled and an outlined rectangle, a circle and a polygon.
void drawScene(GwGC& gc) {
    gc.setColor(0x000000FFUL, 0);
    gc.drawLine(GwPosition(5, 5), GwPosition(110, 90));
    gc.setColor(0x00FF0000UL, 1);
    gc.drawRectangle(GwPosition(10, 50), GwPosition(40, 80), true);
    gc.drawRectangle(GwPosition(60, 10), GwPosition(100, 40), false);
    gc.drawCircle(GwPosition(80, 70), 15, false);
    GwPosition triangle[] = {GwPosition(20, 10), GwPosition(50, 10), GwPosition(35, 35)};
    gc.setColor(0x0000FF00UL, 1);
    gc.drawPolygon(triangle, 3, true);
}

// Pixels of a whose colour differs from b at the same place and from every neighbour of b
// within one pixel.
int farDifferences(Canvas const& a, Canvas const& b) {
    HDC da = GetDC(a.hwnd());
    HDC db = GetDC(b.hwnd());
    int count = 0;
    for (int row = 1; row < a.height() - 1; ++row)
        for (int x = 1; x < a.width() - 1; ++x) {
            COLORREF c = GetPixel(da, x, row);
            bool found = false;
            for (int dy = -1; dy <= 1 && !found; ++dy)
                for (int dx = -1; dx <= 1 && !found; ++dx)
                    found = GetPixel(db, x + dx, row + dy) == c;
            count += found ? 0 : 1;
        }
    ReleaseDC(a.hwnd(), da);
    ReleaseDC(b.hwnd(), db);
    return count;
}

// The drawing made directly on a window.
struct Direct {
    Direct() {
        GwGC gc(canvas.window(), nullptr);
        drawScene(gc);
    }
    Canvas canvas{kWidth, kHeight};
};

void playInto(GwGCWMF& metafile, Canvas const& canvas) {
    GwGC target(canvas.window(), nullptr);
    metafile.play(target);
}

// Records the scene into a context for the given file.
void recordScene(GwGCWMF& metafile) {
    metafile.setDimension(kWidth, kHeight);
    metafile.record();
    drawScene(metafile);
}

} // namespace

TEST(GCWMF, APlayedRecordingMatchesTheDirectDrawing) {
    Direct direct;
    ASSERT_GT(direct.canvas.markedCount(), 500);
    GwGCWMF metafile;
    recordScene(metafile);
    EXPECT_TRUE(metafile.recording());
    Canvas played(kWidth, kHeight);
    playInto(metafile, played);
    EXPECT_FALSE(metafile.recording()) << "play ends the recording";
    EXPECT_NE(metafile.metafile(), nullptr);
    EXPECT_EQ(farDifferences(played, direct.canvas), 0);
    EXPECT_EQ(farDifferences(direct.canvas, played), 0);
    // Spot checks: the y axis points up in the recording too.
    EXPECT_EQ(played.at(25, 65), kRed);
    EXPECT_EQ(played.at(35, 15), kGreen);
}

TEST(GCWMF, TheRecordingCarriesTheFrameInHundredthsOfAMillimetreAndTheDescription) {
    GwGCWMF metafile;
    metafile.setDimension(kWidth, kHeight);
    metafile.record();
    metafile.drawLine2D(1, 1, 5, 5);
    Canvas canvas(kWidth, kHeight);
    playInto(metafile, canvas);
    auto handle = static_cast<HENHMETAFILE>(metafile.metafile());
    ASSERT_NE(handle, nullptr);
    ENHMETAHEADER header{};
    ASSERT_NE(GetEnhMetaFileHeader(handle, sizeof header, &header), 0u);
    HDC screen = GetDC(nullptr);
    long const right =
        GetDeviceCaps(screen, HORZSIZE) * kWidth * 100 / GetDeviceCaps(screen, HORZRES);
    long const bottom =
        GetDeviceCaps(screen, VERTSIZE) * kHeight * 100 / GetDeviceCaps(screen, VERTRES);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(header.rclFrame.left, 0);
    EXPECT_EQ(header.rclFrame.top, 0);
    EXPECT_EQ(header.rclFrame.right, right);
    EXPECT_EQ(header.rclFrame.bottom, bottom);
    char description[64] = {};
    UINT length = GetEnhMetaFileDescriptionA(handle, sizeof description, description);
    // Two strings, each ended by NUL, and a final NUL.
    ASSERT_EQ(length, 32u);
    EXPECT_EQ(std::string(description, length),
              std::string("VALMOR Systeme GmbH\0Ohne Titel\0", 32));
}

TEST(GCWMF, PlayWithoutAWidthKeepsThePicturesAspectRatio) {
    GwGCWMF metafile;
    metafile.setDimension(100, 50);
    metafile.record();
    metafile.setColor(0x00FF0000UL, 1);
    metafile.setColor(0x00FF0000UL, 0);
    metafile.drawRectangle2D(0, 1, 99, 49, true); // the whole picture
    metafile.setDimension(0, 40);
    metafile.setPosition(10, 20);
    Canvas canvas(kWidth, kHeight);
    playInto(metafile, canvas);
    std::vector<POINT> red = canvas.marked();
    ASSERT_FALSE(red.empty());
    long left = 1000, right = -1, bottom = 1000, top = -1;
    for (POINT const& point : red) {
        left = std::min<long>(left, point.x);
        right = std::max<long>(right, point.x);
        bottom = std::min<long>(bottom, point.y);
        top = std::max<long>(top, point.y);
    }
    EXPECT_NEAR(left, 10, 1);
    EXPECT_NEAR(right - left + 1, 80, 2) << "twice the height, as recorded";
    EXPECT_NEAR(top - bottom + 1, 40, 2);
    EXPECT_NEAR(bottom, 21, 1);

    canvas.clear();
    metafile.setDimension(60, 0);
    metafile.setPosition(0, 50);
    playInto(metafile, canvas);
    red = canvas.marked();
    top = -1;
    bottom = 1000;
    for (POINT const& point : red) {
        bottom = std::min<long>(bottom, point.y);
        top = std::max<long>(top, point.y);
    }
    EXPECT_NEAR(top - bottom + 1, 30, 2) << "half the width";
}

TEST(GCWMF, PlayingWithoutARecordingOrFileDrawsNothing) {
    GwGCWMF metafile;
    Canvas canvas(kWidth, kHeight);
    playInto(metafile, canvas);
    EXPECT_EQ(metafile.metafile(), nullptr);
    EXPECT_EQ(canvas.markedCount(), 0);
}

TEST(GCWMF, AllThreeFileKindsPlayLikeTheDrawing) {
    Direct direct;
    struct Kind {
        char const* name;
        bool enhanced;
        bool placeable;
        int tolerance; // pixels that may differ after the Windows-metafile round trip
    };
    for (Kind kind : {Kind{"gw-scene.emf", true, false, 0}, Kind{"gw-scene.wmf", false, true, 30},
                      Kind{"gw-plain.wmf", false, false, 30}}) {
        SCOPED_TRACE(kind.name);
        TempFile file(kind.name);
        {
            GwGCWMF writer(file.c_str(), kind.enhanced, kind.placeable);
            recordScene(writer);
            EXPECT_TRUE(writer.modified());
        }
        std::vector<unsigned char> bytes = readFile(file.path());
        ASSERT_GT(bytes.size(), 60u);
        if (kind.enhanced)
            EXPECT_EQ(dword(bytes, 40), 0x464D4520u);
        else if (kind.placeable)
            EXPECT_EQ(dword(bytes, 0), 0x9AC6CDD7u);
        else
            EXPECT_EQ(word(bytes, 2), 9u) << "a plain Windows metafile header";

        GwGCWMF reader(file.c_str(), kind.enhanced, kind.placeable);
        reader.setDimension(kWidth, kHeight);
        Canvas played(kWidth, kHeight);
        playInto(reader, played);
        ASSERT_NE(reader.metafile(), nullptr);
        EXPECT_LE(farDifferences(played, direct.canvas), kind.tolerance);
        EXPECT_LE(farDifferences(direct.canvas, played), kind.tolerance);
        EXPECT_EQ(played.at(25, 65), kRed);
        EXPECT_FALSE(reader.modified()) << "a loaded file is not written again";
    }
}

TEST(GCWMF, ThePlaceableHeaderCarriesTheBoundsAndItsChecksum) {
    TempFile file("gw-header.wmf");
    RECTL bounds{};
    {
        GwGCWMF writer(file.c_str(), false, true);
        recordScene(writer);
        Canvas canvas(kWidth, kHeight);
        playInto(writer, canvas); // ends the recording, the file is written at the end
        ENHMETAHEADER header{};
        GetEnhMetaFileHeader(static_cast<HENHMETAFILE>(writer.metafile()), sizeof header, &header);
        bounds = header.rclBounds;
    }
    std::vector<unsigned char> bytes = readFile(file.path());
    ASSERT_GT(bytes.size(), 22u + 18u);
    EXPECT_EQ(dword(bytes, 0), 0x9AC6CDD7u) << "key";
    EXPECT_EQ(word(bytes, 4), 0u) << "handle";
    HDC screen = GetDC(nullptr);
    int const dpiX = GetDeviceCaps(screen, LOGPIXELSX);
    int const dpiY = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(static_cast<std::int16_t>(word(bytes, 6)), MulDiv(bounds.left, 2540, dpiX));
    EXPECT_EQ(static_cast<std::int16_t>(word(bytes, 8)), MulDiv(bounds.top, 2540, dpiY));
    EXPECT_EQ(static_cast<std::int16_t>(word(bytes, 10)), MulDiv(bounds.right, 2540, dpiX));
    EXPECT_EQ(static_cast<std::int16_t>(word(bytes, 12)), MulDiv(bounds.bottom, 2540, dpiY));
    EXPECT_EQ(word(bytes, 14), 2540u) << "units per inch";
    EXPECT_EQ(dword(bytes, 16), 0u) << "reserved";
    std::uint16_t sum = 0;
    for (std::size_t i = 0; i < 10; ++i)
        sum ^= word(bytes, 2 * i);
    EXPECT_EQ(word(bytes, 20), sum) << "checksum";
    // The Windows metafile follows: its size in words covers the rest of the file.
    EXPECT_EQ(word(bytes, 22 + 2), 9u);
    EXPECT_EQ(2u * dword(bytes, 22 + 6), bytes.size() - 22);
}

TEST(GCWMF, ConvertWmfToEmfWritesTheEnhancedFileAtDestruction) {
    TempFile wmf("gw-drawing.wmf");
    TempFile emf("gw-drawing.emf");
    {
        GwGCWMF writer(wmf.c_str(), false, true);
        recordScene(writer);
    }
    ASSERT_FALSE(readFile(wmf.path()).empty());
    {
        GwGCWMF converter(wmf.c_str(), false, true);
        converter.convertWmfToEmf();
        EXPECT_EQ(std::string(converter.fileName().c_str()), emf.path());
        EXPECT_TRUE(converter.enhanced());
        EXPECT_FALSE(converter.placeable());
        EXPECT_TRUE(converter.modified());
        EXPECT_NE(converter.metafile(), nullptr);
        EXPECT_TRUE(readFile(emf.path()).empty()) << "written only at the end";
    }
    std::vector<unsigned char> bytes = readFile(emf.path());
    ASSERT_GT(bytes.size(), 88u);
    EXPECT_EQ(dword(bytes, 0), 1u) << "header record";
    EXPECT_EQ(dword(bytes, 40), 0x464D4520u);

    GwGCWMF reader(emf.c_str());
    reader.setDimension(kWidth, kHeight);
    Canvas played(kWidth, kHeight);
    playInto(reader, played);
    EXPECT_EQ(played.at(25, 65), kRed);
}

TEST(GCWMF, SetClipboardTwicePutsANullHandleTheSecondTime) {
    GwGCWMF metafile;
    recordScene(metafile);
    metafile.setClipboard();
    EXPECT_FALSE(metafile.recording());
    EXPECT_EQ(metafile.metafile(), nullptr) << "the clipboard owns it now";
    ASSERT_TRUE(OpenClipboard(nullptr));
    auto onClipboard = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
    ASSERT_NE(onClipboard, nullptr);
    ENHMETAHEADER header{};
    EXPECT_NE(GetEnhMetaFileHeader(onClipboard, sizeof header, &header), 0u);
    EXPECT_GT(header.nRecords, 5u);
    CloseClipboard();

    // Played from the clipboard, the picture is the drawing.
    Direct direct;
    Canvas played(kWidth, kHeight);
    {
        GwGC target(played.window(), nullptr);
        ASSERT_TRUE(OpenClipboard(nullptr));
        onClipboard = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
        RECT rect{0, kHeight, kWidth, 0};
        PlayEnhMetaFile(static_cast<HDC>(target.device()), onClipboard, &rect);
        CloseClipboard();
    }
    EXPECT_EQ(farDifferences(played, direct.canvas), 0);

    metafile.setClipboard();
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_EQ(GetClipboardData(CF_ENHMETAFILE), nullptr);
    CloseClipboard();
}

TEST(GCWMF, ACopyKeepsItsMetafileWhenTheOtherGoesToTheClipboard) {
    GwGCWMF metafile;
    recordScene(metafile);
    Canvas scratch(kWidth, kHeight);
    playInto(metafile, scratch);
    GwGCWMF copy(metafile);
    metafile.setClipboard();
    EXPECT_EQ(metafile.metafile(), nullptr);
    ASSERT_NE(copy.metafile(), nullptr);
    ASSERT_TRUE(OpenClipboard(nullptr));
    auto onClipboard = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
    EXPECT_NE(onClipboard, nullptr);
    EXPECT_NE(onClipboard, copy.metafile()) << "the clipboard has a handle of its own";
    CloseClipboard();
    Canvas played(kWidth, kHeight);
    playInto(copy, played);
    EXPECT_EQ(played.at(25, 65), kRed);
}

TEST(GCWMF, TheFontAngleFollowsTheFileKind) {
    double const quarter = 2.0 * std::atan(1.0);
    struct Case {
        bool enhanced;
        double angle;
        LONG escapement;
    };
    for (Case one : {Case{true, 0.0, 0}, Case{true, quarter, 900}, Case{false, 0.0, 0},
                     Case{false, quarter, 2700}}) {
        GwGCWMF metafile(nullptr, one.enhanced, false);
        metafile.setDimension(50, 50);
        metafile.record();
        metafile.setFont("Arial", 10, one.angle);
        LOGFONTA font{};
        GetObjectA(GetCurrentObject(static_cast<HDC>(metafile.device()), OBJ_FONT), sizeof font,
                   &font);
        EXPECT_EQ(font.lfEscapement, one.escapement) << one.enhanced << " " << one.angle;
    }
}

TEST(GCWMF, CalcTextAnswersAPositiveHeight) {
    GwGCWMF metafile;
    metafile.setDimension(200, 100);
    metafile.record();
    metafile.setFont("Tahoma", 14, 0.0);
    GwDimension extent = metafile.calcText("Hallo");
    EXPECT_GT(extent.width(), 0);
    EXPECT_GT(extent.height(), 0);
}

TEST(GCWMF, TextRecordedAtAPointLandsWhereTheDirectDrawingPutsIt) {
    Canvas direct(200, 100);
    {
        GwGC gc(direct.window(), nullptr);
        gc.setFont("Tahoma", 16, 0.0);
        gc.drawText("Hallo", GwPosition(50, 50), 0x8);
    }
    GwGCWMF metafile;
    metafile.setDimension(200, 100);
    metafile.record();
    metafile.setFont("Tahoma", 16, 0.0);
    metafile.drawText("Hallo", GwPosition(50, 50), 0x8);
    Canvas played(200, 100);
    playInto(metafile, played);
    ASSERT_GT(direct.markedCount(), 20);
    EXPECT_LE(farDifferences(played, direct), direct.markedCount() / 10);
}

TEST(GCWMF, TheClassRecordMakesADefaultContext) {
    Class const* record = Class::lookup("GwGCWMF");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwGCWMF::isa());
    EXPECT_STREQ(record->parentNames()[0], "GwGC");
    std::unique_ptr<Object> made(record->createInstance(nullptr));
    auto* metafile = dynamic_cast<GwGCWMF*>(made.get());
    ASSERT_NE(metafile, nullptr);
    EXPECT_EQ(metafile->device(), nullptr);
    EXPECT_EQ(metafile->metafile(), nullptr);
    EXPECT_TRUE(metafile->enhanced());
    EXPECT_EQ(metafile->fileName().size(), 0u);
}

TEST(GCWMF, CopiesShareTheMetafile) {
    auto original = std::make_unique<GwGCWMF>();
    recordScene(*original);
    Canvas scratch(kWidth, kHeight);
    playInto(*original, scratch);
    GwGCWMF copy(*original);
    EXPECT_EQ(copy.metafile(), original->metafile());
    EXPECT_EQ(copy.dimension(), original->dimension());
    original.reset();
    Canvas played(kWidth, kHeight);
    playInto(copy, played);
    EXPECT_EQ(played.at(25, 65), kRed) << "the copy's handle outlives the original";
}

TEST(GCWMF, CorruptedFilesLeaveTheContextWithoutAMetafile) {
    TempFile good("gw-good.wmf");
    TempFile goodEmf("gw-good.emf");
    {
        GwGCWMF writer(good.c_str(), false, true);
        recordScene(writer);
    }
    {
        GwGCWMF writer(goodEmf.c_str(), true, false);
        recordScene(writer);
    }
    std::vector<unsigned char> const placeable = readFile(good.path());
    std::vector<unsigned char> const enhanced = readFile(goodEmf.path());
    std::vector<unsigned char> const plain(placeable.begin() + 22, placeable.end());
    ASSERT_GT(placeable.size(), 100u);
    ASSERT_GT(enhanced.size(), 100u);

    std::vector<std::pair<std::string, std::vector<unsigned char>>> bad;
    bad.push_back({"empty", {}});
    for (std::size_t cut : {std::size_t(1), std::size_t(3), std::size_t(4), std::size_t(21),
                            std::size_t(22), std::size_t(30), std::size_t(39), std::size_t(40),
                            placeable.size() / 2, placeable.size() - 1})
        bad.push_back({"placeable cut at " + std::to_string(cut),
                       std::vector<unsigned char>(placeable.begin(), placeable.begin() + cut)});
    for (std::size_t cut : {std::size_t(8), std::size_t(17), std::size_t(18), std::size_t(40),
                            plain.size() / 2, plain.size() - 1})
        bad.push_back({"plain cut at " + std::to_string(cut),
                       std::vector<unsigned char>(plain.begin(), plain.begin() + cut)});
    for (std::size_t cut : {std::size_t(40), std::size_t(44), std::size_t(51), std::size_t(52),
                            std::size_t(88), enhanced.size() / 2, enhanced.size() - 1})
        bad.push_back({"enhanced cut at " + std::to_string(cut),
                       std::vector<unsigned char>(enhanced.begin(), enhanced.begin() + cut)});
    std::vector<unsigned char> wrongSignature = enhanced;
    wrongSignature[40] ^= 0xFF;
    bad.push_back({"wrong enhanced signature", wrongSignature});
    std::vector<unsigned char> wrongKey = placeable;
    wrongKey[0] ^= 0xFF;
    bad.push_back({"wrong placeable key", wrongKey});
    std::vector<unsigned char> hugePlaceable = placeable;
    hugePlaceable[22 + 6] = 0xFF;
    hugePlaceable[22 + 7] = 0xFF;
    hugePlaceable[22 + 8] = 0xFF;
    hugePlaceable[22 + 9] = 0x7F;
    bad.push_back({"placeable size field larger than the file", hugePlaceable});
    std::vector<unsigned char> lyingEmf = enhanced;
    lyingEmf[48] = 0xFF;
    lyingEmf[49] = 0xFF;
    lyingEmf[50] = 0xFF;
    lyingEmf[51] = 0x00;
    bad.push_back({"enhanced byte count larger than the file", lyingEmf});
    std::vector<unsigned char> lyingRecord = plain;
    lyingRecord[18] = 0xFF;
    lyingRecord[19] = 0xFF;
    bad.push_back({"record larger than the metafile", lyingRecord});
    bad.push_back({"text", std::vector<unsigned char>(200, 'x')});

    TempFile file("gw-corrupt.wmf");
    for (auto const& [name, bytes] : bad) {
        SCOPED_TRACE(name);
        writeFile(file.path(), bytes);
        GwGCWMF reader(file.c_str(), false, true);
        reader.setDimension(kWidth, kHeight);
        Canvas canvas(40, 40);
        playInto(reader, canvas);
        EXPECT_EQ(reader.metafile(), nullptr);
        EXPECT_EQ(canvas.markedCount(), 0);
    }
    GwGCWMF missing("gw-does-not-exist.emf");
    Canvas canvas(40, 40);
    playInto(missing, canvas);
    EXPECT_EQ(missing.metafile(), nullptr);
}
