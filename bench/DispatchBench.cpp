// What a message costs on its way through the library, and what the application's start-up
// hooks cost.
//
// Dispatch: SendMessageA of WM_TIMER (a timer that is not a click timer) to three windows of
// one raw class:
//   A  bound to a GwWindow object with one uncounted event handler, whose cbTimer counts;
//   B  subclassed by hand: a procedure that reads GWLP_USERDATA, makes one virtual call that
//      counts, and passes the message on to the saved procedure with CallWindowProcA;
//   C  not subclassed at all.
// The same three procedures are also called directly, which leaves the system's delivery of
// the message out and shows what each procedure itself costs; and A's dispatchEvent alone
// shows the library's own work, without any system call.
// Start-up: constructing and destroying the application (the start-up hooks, among them the
// atom learning of the 16 known window classes) against creating and destroying a
// temporary window of each of those 16 classes.
//
// The variants run interleaved, in several rounds with a rotating order; each variant's
// median over the rounds is reported. The program always exits 0: it measures, it does not
// judge.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <GwApplication.h>
#include <GwEventHandler.h>
#include <GwWindow.h>

#include "BenchTiming.h"

// The hand-written side of the comparison: a handler interface with one virtual callback.
// Outside the anonymous namespace, so that the compiler cannot know every implementation and
// turn the call into a direct one (the build keeps it from guessing one, too).
class RawHandler {
public:
    virtual ~RawHandler() = default;
    virtual int onTimer(HWND hwnd) = 0;
};

class RawCounter : public RawHandler {
public:
    int onTimer(HWND) override {
        ++calls;
        return 1;
    }

    unsigned long long calls = 0;
};

using bench::interleave;
using bench::median;
using bench::minimum;
using bench::nowNs;
using bench::pairedRatio;

namespace {

double const kTarget = 1.15;
// Many short rounds: a burst of load elsewhere spoils a few samples, not the medians.
int const kRounds = 31;        // measured rounds; one more runs first as warm-up
double const kSampleNs = 10e6; // one sample: about 10 ms
// Timers 1 to 3 are the click timers, which only get killed: any other reaches cbTimer.
WPARAM const kTimerId = 42;
char const kRawClass[] = "VmGuiBenchRaw";

// The application object; the program's entry code owns it.
class BenchApplication : public GwApplication {
public:
    BenchApplication() = default;
};

// A window object that keeps the base class's message handling.
class BenchWindow : public GwWindow {
public:
    explicit BenchWindow(HWND hwnd) : GwWindow(hwnd) {}

    // The library's own work for one message, no system call in it: the dispatcher's walk of
    // the handlers and the callback.
    double dispatchOnly(int count) {
        double const start = nowNs();
        for (int i = 0; i < count; ++i)
            dispatchEvent(WM_TIMER, kTimerId, 0);
        return (nowNs() - start) / count;
    }
};

class CountingHandler : public GwEventHandler {
public:
    CountingHandler() : GwEventHandler(false) {}

    int cbTimer(GwWindow&) override {
        ++calls;
        return GwResultContinue;
    }

    unsigned long long calls = 0;
};

// What the hand-written procedure finds in GWLP_USERDATA.
struct RawBinding {
    RawHandler* handler;
    WNDPROC previous;
};

LRESULT CALLBACK handWrittenProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    auto* binding = reinterpret_cast<RawBinding*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
    if (msg == WM_TIMER)
        binding->handler->onTimer(hwnd);
    return CallWindowProcA(binding->previous, hwnd, msg, wParam, lParam);
}

// The classes whose atoms the application learns at start-up.
char const* const kKnownClasses[] = {
    "Button",          "ComboBox",       "Edit",         "ListBox",     "ScrollBar",
    "Static",          WC_TABCONTROLA,   WC_LISTVIEWA,   WC_TREEVIEWA,  WC_HEADERA,
    TOOLBARCLASSNAMEA, STATUSCLASSNAMEA, ANIMATE_CLASSA, UPDOWN_CLASSA, PROGRESS_CLASSA,
    TRACKBAR_CLASSA,
};

void registerRawClass() {
    WNDCLASSA cls{};
    cls.lpfnWndProc = DefWindowProcA;
    cls.hInstance = GetModuleHandleA(nullptr);
    cls.lpszClassName = kRawClass;
    RegisterClassA(&cls);
}

HWND rawWindow() {
    return CreateWindowExA(0, kRawClass, "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

// Nanoseconds per message for count messages sent to the window.
double sendMessages(HWND hwnd, int count) {
    double const start = nowNs();
    for (int i = 0; i < count; ++i)
        SendMessageA(hwnd, WM_TIMER, kTimerId, 0);
    return (nowNs() - start) / count;
}

// Nanoseconds per call when the window's procedure is called directly, without SendMessageA:
// what the procedure itself costs, the system's delivery left out.
double callProcedure(HWND hwnd, int count) {
    auto const procedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(hwnd, GWLP_WNDPROC));
    double const start = nowNs();
    for (int i = 0; i < count; ++i)
        procedure(hwnd, WM_TIMER, kTimerId, 0);
    return (nowNs() - start) / count;
}

// How often to repeat something that takes about perCall nanoseconds so that one sample
// takes about kSampleNs.
int repetitions(double perCall, int least) {
    double const wanted = kSampleNs / std::max(perCall, 1.0);
    return std::max(least, static_cast<int>(std::min(wanted, 1e7)));
}

bool dispatchBench() {
    HWND const library = rawWindow();
    HWND const handWritten = rawWindow();
    HWND const unsubclassed = rawWindow();
    if (library == nullptr || handWritten == nullptr || unsubclassed == nullptr) {
        std::printf("dispatch: could not create the windows (error %lu)\n", GetLastError());
        return false;
    }

    // A: the object binds and subclasses the window; it deletes itself on WM_NCDESTROY.
    CountingHandler counting;
    auto* const object = new BenchWindow(library);
    object->add(&counting);

    // B: the same binding written by hand.
    RawCounter rawCounter;
    RawBinding binding{&rawCounter, nullptr};
    SetWindowLongPtrA(handWritten, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&binding));
    binding.previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(handWritten, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handWrittenProc)));

    int const count = repetitions(sendMessages(library, 20000), 10000);
    enum How { eSend, eCall, eDispatch };
    struct Run {
        HWND hwnd;
        int count;
        How how;
        BenchWindow* object;
        double operator()() const {
            switch (how) {
            case eSend:
                return sendMessages(hwnd, count);
            case eCall:
                return callProcedure(hwnd, count);
            default:
                return object->dispatchOnly(count * 10);
            }
        }
    };
    std::vector<Run> const runs{
        {library, count, eSend, object},      {handWritten, count, eSend, object},
        {unsubclassed, count, eSend, object}, {library, count, eCall, object},
        {handWritten, count, eCall, object},  {unsubclassed, count, eCall, object},
        {library, count, eDispatch, object}};
    unsigned long long const libraryBefore = counting.calls;
    unsigned long long const rawBefore = rawCounter.calls;
    std::vector<std::vector<double>> const samples = interleave(runs, kRounds);
    unsigned long long const expected = static_cast<unsigned long long>(count) * (kRounds + 1);
    bool const counted = counting.calls - libraryBefore == expected * 12 &&
                         rawCounter.calls - rawBefore == expected * 2;

    DestroyWindow(library);
    DestroyWindow(handWritten);
    DestroyWindow(unsubclassed);

    double const a = median(samples[0]);
    double const b = median(samples[1]);
    double const c = median(samples[2]);
    std::printf("dispatch rounds: %d, messages per round and variant: %d\n", kRounds, count);
    std::printf("dispatch library (A): %.1f ns/message (fastest round %.1f)\n", a,
                minimum(samples[0]));
    std::printf("dispatch hand-written (B): %.1f ns/message (fastest round %.1f)\n", b,
                minimum(samples[1]));
    std::printf("dispatch unsubclassed (C): %.1f ns/message (fastest round %.1f)\n", c,
                minimum(samples[2]));
    std::printf("dispatch ratio library/hand-written: %.2f\n", a / b);
    std::printf("dispatch ratio library/hand-written, median of rounds: %.2f\n",
                pairedRatio(samples[0], samples[1]));
    std::printf("dispatch ratio library/unsubclassed: %.2f\n", a / c);
    std::printf("dispatch subclassing cost library/hand-written: %.1f/%.1f ns\n", a - c, b - c);
    double const directA = median(samples[3]);
    double const directB = median(samples[4]);
    double const directC = median(samples[5]);
    std::printf("procedure only, called directly: library %.1f, hand-written %.1f, "
                "unsubclassed %.1f ns/call\n",
                directA, directB, directC);
    std::printf("procedure only ratio library/hand-written: %.2f\n", directA / directB);
    std::printf("dispatcher only (dispatchEvent called directly): %.1f ns/message\n",
                median(samples[6]));
    std::printf("dispatch target %.2f: %s\n", kTarget, a / b <= kTarget ? "met" : "not met");
    if (counted)
        bench::row("SendMessageA to one handler vs hand-written subclass", a, b, "ns/message",
                   a / b, kTarget);
    std::printf("dispatch handler calls: %s\n",
                counted ? "one per message in A and B" : "WRONG, the numbers above mean nothing");
    return counted;
}

// Nanoseconds per application constructed and destroyed.
double applicationCycles(int count) {
    double const start = nowNs();
    for (int i = 0; i < count; ++i) {
        BenchApplication application;
    }
    return (nowNs() - start) / count;
}

// Nanoseconds per set of 16 temporary windows, one of each known class, each created, asked
// for its class atom and destroyed.
double windowCycles(HWND parent, int count, unsigned* atoms) {
    double const start = nowNs();
    for (int i = 0; i < count; ++i) {
        for (char const* name : kKnownClasses) {
            HWND const hwnd = CreateWindowExA(0, name, "", WS_CHILD, 0, 0, 10, 10, parent, nullptr,
                                              GetModuleHandleA(nullptr), nullptr);
            if (hwnd != nullptr) {
                if (GetClassWord(hwnd, GCW_ATOM) != 0)
                    ++*atoms;
                DestroyWindow(hwnd);
            }
        }
    }
    return (nowNs() - start) / count;
}

void startupBench() {
    HWND const parent = rawWindow();
    unsigned atoms = 0;
    windowCycles(parent, 1, &atoms); // the first windows of a class load what they need
    bool const allClasses = atoms == 16;

    int const applications = repetitions(applicationCycles(10), 10);
    int const windowSets = repetitions(windowCycles(parent, 2, &atoms), 2);
    struct Run {
        int which;
        int count;
        HWND parent;
        unsigned* atoms;
        double operator()() const {
            return which == 0 ? applicationCycles(count) : windowCycles(parent, count, atoms);
        }
    };
    std::vector<Run> const runs{{0, applications, parent, &atoms}, {1, windowSets, parent, &atoms}};
    std::vector<std::vector<double>> const samples = interleave(runs, kRounds);
    DestroyWindow(parent);

    double const application = median(samples[0]) / 1000;
    double const windows = median(samples[1]) / 1000;
    std::printf("startup rounds: %d, per round: %d applications, %d window sets\n", kRounds,
                applications, windowSets);
    std::printf("startup application constructor+destructor: %.2f us\n", application);
    std::printf("startup 16 temporary windows created+destroyed: %.2f us%s\n", windows,
                allClasses ? "" : " (some classes could not be created)");
    std::printf("startup ratio application/windows: %.3f\n", application / windows);
    bench::row("GwApplication start-up vs 16 temporary windows", application, windows, "us",
               application / windows, 0);
}

} // namespace

int main() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES;
    InitCommonControlsEx(&controls);
    registerRawClass();

    {
        // Messages are measured with an application in place, as in a program.
        BenchApplication application;
        dispatchBench();
    }
    // The application cycles need that none is current.
    startupBench();
    std::fflush(stdout);
    return 0;
}
