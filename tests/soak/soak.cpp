// The soak run: soak.exe [cycles] repeats the cycle of SoakCycle.h (10,000 times unless told
// otherwise) and prints the live library objects, the USER and GDI handles and the private
// bytes before the first cycle, after the warm-up, after cycle 1,000 and at the end. It ends
// with 0 when the objects and handles at the end equal those after the warm-up of 10 cycles
// and the private bytes are within 1 % of those half-way (after cycle 1,000 at the most: the
// platform's heaps settle later than the counts), with 1 when something grew and with 2
// when a cycle could not do its work.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <GwApplication.h>

#include "HandleCount.h"
#include "SoakCycle.h"

namespace {

class SoakApplication : public GwApplication {
public:
    SoakApplication() : GwApplication("Dauerlauf") {}
};

long long const kDefaultCycles = 10000;
long long const kWarmUp = 10;
long long const kReport = 1000;

} // namespace

int main(int argc, char** argv) {
    long long cycles = kDefaultCycles;
    if (argc > 1) {
        char* end = nullptr;
        cycles = std::strtoll(argv[1], &end, 10);
        if (end == argv[1] || *end != '\0' || cycles < 1) {
            std::fprintf(stderr, "usage: soak [cycles]   (cycles at least 1, default %lld)\n",
                         kDefaultCycles);
            return 2;
        }
    }
    SoakApplication application;
    bool watched = false;
    soak::watchLibraryHandles();
    soak::countHandles(&watched);
    std::printf("USER and GDI handles: %s\n",
                watched ? "counted through the library's import table (GetGuiResources "
                          "counts nothing here)"
                        : "GetGuiResources");
    auto const started = std::chrono::steady_clock::now();
    soak::print(stdout, "start", 0, soak::measure());
    long long const warmUp = cycles < kWarmUp ? cycles : kWarmUp;
    long long const settled = cycles / 2 < kReport ? (cycles + 1) / 2 : kReport;
    soak::Figures baseline;
    soak::Figures memoryBaseline;
    for (long long cycle = 1; cycle <= cycles; ++cycle) {
        soak::CycleReport const report = soak::runCycle();
        if (!report.complete()) {
            std::fprintf(stderr,
                         "cycle %lld did not do its work: frame %d tool bar %d painted %d "
                         "dialog %d metafile %d\n",
                         cycle, report.frame, report.toolBar, report.painted, report.dialog,
                         report.metafile);
            return 2;
        }
        if (cycle == warmUp) {
            baseline = soak::measure();
            soak::print(stdout, "warm-up", cycle, baseline);
        }
        if (cycle == settled)
            memoryBaseline = soak::measure();
        if (cycle == kReport && cycle != cycles && cycle != warmUp)
            soak::print(stdout, "", cycle, memoryBaseline);
    }
    soak::Figures const last = soak::measure();
    soak::print(stdout, "end", cycles, last);
    double const seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    bool const counts = soak::countsFlat(baseline, last);
    bool const memory = soak::memoryFlat(memoryBaseline, last);
    std::printf("%lld cycles in %.1f s (%.2f ms a cycle): objects and handles %s after cycle "
                "%lld, private bytes %s after cycle %lld\n",
                cycles, seconds, 1000.0 * seconds / static_cast<double>(cycles),
                counts ? "flat" : "GROWN", warmUp, memory ? "flat" : "GROWN", settled);
    return counts && memory ? 0 : 1;
}
