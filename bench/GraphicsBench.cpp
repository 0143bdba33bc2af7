// The graphics context against the raw GDI calls it makes: lines, font selection (with a
// small and a large font table), and recording and playing a metafile. The variants run
// interleaved, round after round; each figure is the median over the rounds.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <VmGui.h>

#include "BenchTiming.h"

namespace {

int const kRounds = 15;
int const kLines = 10000;
int const kWidth = 400;
int const kHeight = 300;

double seconds(std::function<void()> const& work) {
    auto const start = std::chrono::steady_clock::now();
    work();
    GdiFlush();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

using bench::median;

// Runs the variants interleaved and prints each median and its ratio to the first, the raw
// code; the last variant is the library's, reported as a table row under rowName.
void compare(char const* title, char const* rowName, double target,
             std::vector<std::pair<char const*, std::function<void()>>> const& variants) {
    std::vector<std::vector<double>> times(variants.size());
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < variants.size(); ++i)
            times[i].push_back(seconds(variants[i].second));
    std::printf("%s\n", title);
    double const base = median(times[0]);
    for (std::size_t i = 0; i < variants.size(); ++i) {
        double const value = median(times[i]);
        std::printf("    %-44s %9.3f ms  %5.2fx\n", variants[i].first, value * 1000.0,
                    value / base);
    }
    double const library = median(times.back());
    bench::row(rowName, library * 1000.0, base * 1000.0, "ms", library / base, target);
}

class BenchApplication : public GwApplication {};

class BenchWindow : public GwControl {
public:
    explicit BenchWindow(HWND hwnd) : GwControl(hwnd) {}
};

LOGFONTA fontDescription(char const* face, int size, int escapement, HDC device) {
    LOGFONTA font;
    std::memset(&font, 0, sizeof font);
    font.lfHeight = MulDiv(-size, GetDeviceCaps(device, LOGPIXELSY), 72);
    font.lfEscapement = escapement;
    font.lfOrientation = escapement;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    std::strncpy(font.lfFaceName, face, sizeof font.lfFaceName - 1);
    return font;
}

} // namespace

int main() {
    BenchApplication application;
    WNDCLASSA cls{};
    cls.lpfnWndProc = DefWindowProcA;
    cls.hInstance = GetModuleHandleA(nullptr);
    cls.lpszClassName = "GraphicsBench";
    RegisterClassA(&cls);
    HWND hwnd = CreateWindowExA(0, "GraphicsBench", "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth,
                                kHeight, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    auto* window = new BenchWindow(hwnd); // deleted with its window
    GwGC gc(window, nullptr);
    HDC raw = GetDC(hwnd);
    SetMapMode(raw, MM_ISOTROPIC);
    SetWindowExtEx(raw, 1, 1, nullptr);
    SetViewportExtEx(raw, 1, -1, nullptr);
    SetViewportOrgEx(raw, 0, kHeight, nullptr);

    compare("10,000 lines", "10,000 GwGC::drawLine", 1.10,
            {{"raw MoveToEx, LineTo, SetPixel",
              [&] {
                  for (int i = 0; i < kLines; ++i) {
                      MoveToEx(raw, i % kWidth, 10, nullptr);
                      LineTo(raw, (i * 7) % kWidth, 200);
                      SetPixel(raw, (i * 7) % kWidth, 200, 0);
                  }
              }},
             {"GwGC::drawLine", [&] {
                  for (int i = 0; i < kLines; ++i)
                      gc.drawLine(GwPosition(i % kWidth, 10), GwPosition((i * 7) % kWidth, 200));
              }}});

    // Ten fonts in the table, and the same ten as cached handles for the raw code.
    double const kQuarter = 2.0 * std::atan(1.0);
    std::vector<HFONT> cached;
    for (int i = 0; i < 10; ++i) {
        gc.setFont("Tahoma", 8 + i, 0.0);
        LOGFONTA font = fontDescription("Tahoma", 8 + i, 3600, raw);
        cached.push_back(CreateFontIndirectA(&font));
    }
    auto cycleTable = [&] {
        for (int i = 0; i < kLines; ++i)
            gc.setFont("Tahoma", 8 + i % 10, 0.0);
    };
    compare("10,000 font selections among 10 fonts (table of 10)",
            "10,000 GwGC::setFont among 10 cached fonts", 1.3,
            {{"raw SelectObject of cached fonts",
              [&] {
                  for (int i = 0; i < kLines; ++i)
                      SelectObject(raw, cached[static_cast<std::size_t>(i % 10)]);
              }},
             {"GwGC::setFont", cycleTable}});
    std::vector<double> small;
    for (int round = 0; round < kRounds; ++round)
        small.push_back(seconds(cycleTable));
    // Labels at many angles and sizes fill the table.
    for (int i = 0; GwGC::fontCount() < 10000; ++i)
        gc.setFont("Arial", 6 + i % 40, kQuarter * (i / 40) / 250.0);
    std::vector<double> large;
    for (int round = 0; round < kRounds; ++round)
        large.push_back(seconds(cycleTable));
    std::printf("setFont per call: %.3f us with %d fonts in the table, %.3f us with %d (%.2fx)\n",
                median(small) / kLines * 1e6, 10, median(large) / kLines * 1e6, GwGC::fontCount(),
                median(large) / median(small));
    bench::row("setFont, 10,000 vs 10 fonts in the table", median(large) / kLines * 1e6,
               median(small) / kLines * 1e6, "us/call", median(large) / median(small), 2.0);

    compare("recording 10,000 lines and playing them back",
            "GwGCWMF recording and playing 10,000 lines", 1.10,
            {{"raw enhanced metafile",
              [&] {
                  RECT frame{0, 0, 10000, 7500};
                  HDC device = CreateEnhMetaFileA(nullptr, nullptr, &frame, nullptr);
                  SetMapMode(device, MM_ANISOTROPIC);
                  for (int i = 0; i < kLines; ++i) {
                      MoveToEx(device, i % kWidth, kHeight - 10, nullptr);
                      LineTo(device, (i * 7) % kWidth, kHeight - 200);
                      SetPixel(device, (i * 7) % kWidth, kHeight - 200, 0);
                  }
                  HENHMETAFILE metafile = CloseEnhMetaFile(device);
                  RECT target{0, kHeight, kWidth, 0};
                  PlayEnhMetaFile(static_cast<HDC>(gc.device()), metafile, &target);
                  DeleteEnhMetaFile(metafile);
              }},
             {"GwGCWMF record, drawLine, play", [&] {
                  GwGCWMF metafile;
                  metafile.setDimension(kWidth, kHeight);
                  metafile.record();
                  for (int i = 0; i < kLines; ++i)
                      metafile.drawLine(GwPosition(i % kWidth, 10),
                                        GwPosition((i * 7) % kWidth, 200));
                  metafile.play(gc);
              }}});

    for (HFONT font : cached)
        DeleteObject(font);
    ReleaseDC(hwnd, raw);
    DestroyWindow(hwnd);
    return 0;
}
