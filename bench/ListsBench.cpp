// What item-backed lines cost: a list box (and a combo box) filled one item at a time
// against the same lines written by hand, lookups on a long list against a short one, and a
// tab control filled with tabs whose pages are children.
//
// Filling: 10,000 distinct text items added one by one to an unsorted control,
//   library  add(item) of the control;
//   raw      the equivalent by hand: an insertion at the end, a heap copy of the item and
//            its storage as the line's item data.
// Lookups: item(id), selected(id) and remove(id) (followed by an add that puts the line back,
// so that the list keeps its length) on a list of 10,000 lines against one of 10 lines.
// Tabs: 100 tabs added to a tab control, each with a child window as its page.
//
// The variants run interleaved, in several rounds with a rotating order; each variant's
// median over the rounds is reported. The program always exits 0: it measures, it does not
// judge.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <GwApplication.h>
#include <GwComboBox.h>
#include <GwItem.h>
#include <GwListBox.h>
#include <GwTab.h>

#include "BenchTiming.h"

using bench::interleave;
using bench::median;
using bench::pairedRatio;

namespace {

double const kFillTarget = 1.5;
double const kFlatTarget = 2.0;
int const kLines = 10000;
int const kShort = 10;
int const kFillRounds = 7;
int const kLookupRounds = 15;
int const kLookups = 20000; // calls per lookup sample

class BenchApplication : public GwApplication {
public:
    BenchApplication() = default;
};

// A bound top-level window as the controls' parent.
class BenchParent : public GwWindow {
public:
    explicit BenchParent(HWND hwnd) : GwWindow(hwnd) {}
};

std::vector<GwTextItem> makeItems(int count) {
    std::vector<GwTextItem> items;
    items.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        items.emplace_back(static_cast<unsigned long long>(i),
                           String(("Zeile " + std::to_string(i)).c_str()));
    return items;
}

// The raw lines of a list box or combo box: one insertion, one copy, one item data each.
struct RawMessages {
    char const* className;
    DWORD style;
    UINT insert;
    UINT setData;
    UINT getCount;
    UINT getData;
    UINT reset;
};
RawMessages const kRawList{"LISTBOX",   0x50330141,     LB_INSERTSTRING, LB_SETITEMDATA,
                           LB_GETCOUNT, LB_GETITEMDATA, LB_RESETCONTENT};
RawMessages const kRawCombo{"COMBOBOX",  0x50130002,     CB_INSERTSTRING, CB_SETITEMDATA,
                            CB_GETCOUNT, CB_GETITEMDATA, CB_RESETCONTENT};

double fillRaw(HWND parent, RawMessages const& raw, std::vector<GwTextItem> const& items) {
    HWND const hwnd = CreateWindowExA(0, raw.className, "", raw.style, 0, 0, 200, 200, parent,
                                      nullptr, GetModuleHandleA(nullptr), nullptr);
    double const start = bench::nowNs();
    for (GwTextItem const& item : items) {
        LRESULT const at = SendMessageA(hwnd, raw.insert, static_cast<WPARAM>(-1),
                                        reinterpret_cast<LPARAM>(item.text().c_str()));
        if (at >= 0)
            SendMessageA(hwnd, raw.setData, static_cast<WPARAM>(at),
                         reinterpret_cast<LPARAM>(new GwTextItem(item)));
    }
    double const elapsed = bench::nowNs() - start;
    LRESULT const count = SendMessageA(hwnd, raw.getCount, 0, 0);
    for (LRESULT i = 0; i < count; ++i)
        delete reinterpret_cast<GwTextItem*>(
            SendMessageA(hwnd, raw.getData, static_cast<WPARAM>(i), 0));
    SendMessageA(hwnd, raw.reset, 0, 0);
    DestroyWindow(hwnd);
    return elapsed / static_cast<double>(items.size());
}

template <class Control>
double fillLibrary(Control* control, std::vector<GwTextItem> const& items) {
    double const start = bench::nowNs();
    for (GwTextItem const& item : items)
        control->add(item);
    double const elapsed = bench::nowNs() - start;
    bool const complete = control->size() == static_cast<int>(items.size());
    DestroyWindow(static_cast<HWND>(control->window())); // deletes the object and the copies
    return complete ? elapsed / static_cast<double>(items.size()) : -1;
}

void fillBench(GwWindow& parent) {
    std::vector<GwTextItem> const items = makeItems(kLines);
    HWND const hwnd = static_cast<HWND>(parent.window());
    struct Run {
        int which;
        GwWindow* parent;
        std::vector<GwTextItem> const* items;
        double operator()() const {
            HWND const hwnd = static_cast<HWND>(parent->window());
            switch (which) {
            case 0:
                return fillLibrary(new GwListBox(*parent, 1, false, GwWindow::eUnsorted), *items);
            case 1:
                return fillRaw(hwnd, kRawList, *items);
            case 2:
                return fillLibrary(new GwComboBox(*parent, 2), *items);
            default:
                return fillRaw(hwnd, kRawCombo, *items);
            }
        }
    };
    (void)hwnd;
    std::vector<Run> const runs{
        {0, &parent, &items}, {1, &parent, &items}, {2, &parent, &items}, {3, &parent, &items}};
    std::vector<std::vector<double>> const samples = interleave(runs, kFillRounds);
    char const* names[] = {"list box", "combo box"};
    for (int kind = 0; kind < 2; ++kind) {
        std::vector<double> const& library = samples[static_cast<std::size_t>(2 * kind)];
        std::vector<double> const& raw = samples[static_cast<std::size_t>(2 * kind + 1)];
        double const ratio = pairedRatio(library, raw);
        std::printf("fill %s, %d items one by one: library %.0f ns/item, raw %.0f ns/item, "
                    "ratio %.2f (target %.1f: %s)\n",
                    names[kind], kLines, median(library), median(raw), ratio, kFillTarget,
                    ratio <= kFillTarget ? "met" : "not met");
        std::string const title = std::string("fill ") + names[kind] + " with 10,000 items";
        bench::row(title.c_str(), median(library), median(raw), "ns/item", ratio, kFillTarget);
    }
}

// Nanoseconds per call of one lookup kind on the list, for random identifiers of its lines.
double lookups(GwListBox* list, int kind, int lines, std::mt19937& random) {
    std::vector<unsigned long long> ids(kLookups);
    for (unsigned long long& id : ids)
        id = random() % static_cast<unsigned>(lines);
    unsigned long long found = 0;
    double const start = bench::nowNs();
    switch (kind) {
    case 0:
        for (unsigned long long id : ids)
            found += list->item(id).id() == id ? 1 : 0;
        break;
    case 1:
        for (unsigned long long id : ids)
            found += list->selected(id) ? 1 : 0;
        break;
    default:
        for (unsigned long long id : ids) {
            list->remove(id);
            list->add(GwTextItem(id, "wieder"));
        }
        found =
            static_cast<unsigned long long>(list->size()) == static_cast<unsigned long long>(lines)
                ? kLookups
                : 0;
        break;
    }
    double const elapsed = bench::nowNs() - start;
    if (kind != 1 && found != static_cast<unsigned long long>(kLookups))
        return -1;
    return elapsed / kLookups;
}

void lookupBench(GwWindow& parent) {
    std::vector<GwTextItem> const items = makeItems(kLines);
    auto* longList = new GwListBox(parent, 3, false, GwWindow::eUnsorted);
    auto* shortList = new GwListBox(parent, 4, false, GwWindow::eUnsorted);
    for (GwTextItem const& item : items)
        longList->add(item);
    for (int i = 0; i < kShort; ++i)
        shortList->add(items[static_cast<std::size_t>(i)]);
    longList->selectAt(kLines / 2, true);
    shortList->selectAt(kShort / 2, true);
    std::mt19937 random(4711);
    struct Run {
        GwListBox* list;
        int kind;
        int lines;
        std::mt19937* random;
        double operator()() const { return lookups(list, kind, lines, *random); }
    };
    std::vector<Run> runs;
    for (int kind = 0; kind < 3; ++kind) {
        runs.push_back({longList, kind, kLines, &random});
        runs.push_back({shortList, kind, kShort, &random});
    }
    std::vector<std::vector<double>> const samples = interleave(runs, kLookupRounds);
    char const* names[] = {"item(id)", "selected(id)", "remove(id) + add"};
    for (int kind = 0; kind < 3; ++kind) {
        std::vector<double> const& many = samples[static_cast<std::size_t>(2 * kind)];
        std::vector<double> const& few = samples[static_cast<std::size_t>(2 * kind + 1)];
        double const ratio = pairedRatio(many, few);
        std::printf("lookup %s: %d lines %.0f ns/call, %d lines %.0f ns/call, ratio %.2f "
                    "(target %.1f: %s)\n",
                    names[kind], kLines, median(many), kShort, median(few), ratio, kFlatTarget,
                    ratio <= kFlatTarget ? "met" : "not met");
        std::string const title = std::string(names[kind]) + ", 10,000 vs 10 lines";
        bench::row(title.c_str(), median(many), median(few), "ns/call", ratio, kFlatTarget);
    }
    DestroyWindow(static_cast<HWND>(longList->window()));
    DestroyWindow(static_cast<HWND>(shortList->window()));
}

// Microseconds to fill a tab control with tabs whose pages are children.
double fillTabs(GwWindow& parent, int tabs) {
    auto* tab = new GwTab(parent, 5);
    HWND const hwnd = static_cast<HWND>(tab->window());
    SetWindowPos(hwnd, nullptr, 0, 0, 400, 300, SWP_NOZORDER);
    for (int i = 0; i < tabs; ++i)
        CreateWindowExA(0, "Static", "Seite", WS_CHILD, 0, 0, 10, 10, hwnd,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(100 + i)),
                        GetModuleHandleA(nullptr), nullptr);
    double const start = bench::nowNs();
    for (int i = 0; i < tabs; ++i) {
        GwTabItem item(static_cast<unsigned long long>(100 + i));
        item.setText(String(("Reiter " + std::to_string(i)).c_str()));
        tab->add(item);
    }
    double const elapsed = bench::nowNs() - start;
    bool const complete = tab->size() == tabs;
    DestroyWindow(hwnd);
    return complete ? elapsed / 1000 : -1;
}

void tabBench(GwWindow& parent) {
    struct Run {
        GwWindow* parent;
        double operator()() const { return fillTabs(*parent, 100); }
    };
    std::vector<Run> const runs{{&parent}};
    std::vector<std::vector<double>> const samples = interleave(runs, kFillRounds);
    std::printf("tabs: 100 tabs with child pages added in %.0f us (%.1f us/tab)\n",
                median(samples[0]), median(samples[0]) / 100);
    bench::row("100 tabs with child pages", median(samples[0]), 0, "us", 0, 0);
}

} // namespace

int main() {
    BenchApplication application;
    HWND const top = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 600, 400, nullptr,
                                     nullptr, GetModuleHandleA(nullptr), nullptr);
    auto* parent = new BenchParent(top);
    fillBench(*parent);
    lookupBench(*parent);
    tabBench(*parent);
    DestroyWindow(top);
    return 0;
}
