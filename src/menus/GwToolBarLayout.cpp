// The tool bar's layout: the room it needs in a row, a column or floating, and the
// placement of its embedded controls.
#include "GwToolBar.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdio>

#include "GwControl.h"

namespace {

// A separator of this width ends a group of the floating layout.
constexpr int kGroupSeparator = 8;
// The gap between groups on a row, and below each row.
constexpr int kGroupGap = 8;
constexpr int kRowGap = 5;

struct Measured {
    bool separator;
    int width;
    int height;
};

} // namespace

GwDimension GwToolBar::calculate(eCalculate kind, int limit, GwObjectTable<GwRectangle>* parts) {
    if (kind == eRelease) {
        if (parts != nullptr) {
            for (std::int32_t i = 0; i < parts->count(); ++i)
                delete parts->at(i);
            parts->clear();
        }
        return GwDimension(0, 0);
    }

    // Every button as the platform lays it out; a separator is as wide as its iBitmap.
    int const count = sizeOf();
    auto measure = [this](int index, Measured& out) {
        TBBUTTON found{};
        RECT rect{};
        if (!button(index, &found))
            return false;
        callDefHandler(TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
        out.separator = (found.fsStyle & BTNS_SEP) != 0;
        out.width = out.separator ? found.iBitmap : static_cast<int>(rect.right - rect.left);
        out.height = static_cast<int>(rect.bottom - rect.top);
        return (found.fsState & TBSTATE_HIDDEN) == 0;
    };

    if (kind == eHorizontal || kind == eVertical) {
        int width = 0;
        int height = 0;
        bool first = true;
        for (int index = 0; index < count; ++index) {
            Measured one{};
            if (!measure(index, one))
                continue; // hidden
            if (kind == eHorizontal) {
                width += one.width;
                if (first)
                    height = one.height;
            } else {
                height += one.separator && one.width == kGroupSeparator ? kRowGap : one.height;
                if (first)
                    width = one.width;
            }
            first = false;
        }
        return kind == eHorizontal ? GwDimension(width, height + kRowGap)
                                   : GwDimension(width, height);
    }
    if (kind != eFloating)
        return GwDimension(0, 0);

    // Groups end at separators of width 8; a table that holds records already keeps them.
    GwObjectTable<GwRectangle> own(20);
    GwObjectTable<GwRectangle>* groups = parts != nullptr ? parts : &own;
    if (groups->count() == 0) {
        GwRectangle* group = nullptr;
        for (int index = 0; index < count; ++index) {
            Measured one{};
            measure(index, one);
            if (one.separator && one.width == kGroupSeparator) {
                group = nullptr;
                continue;
            }
            if (group == nullptr) {
                group = new GwRectangle(0, 0, 0, one.height);
                groups->add(group);
            }
            *group = GwDimension(group->width() + one.width, group->height());
        }
    }

    // Rows: a group stays on the row while the row, the group and the gaps fit the limit.
    int row = 0;
    int onRow = 0;
    int rowWidth = 0;
    int widest = 0;
    int tallest = 0;
    for (std::int32_t i = 0; i < groups->count(); ++i) {
        GwRectangle* group = groups->at(i);
        if (group == nullptr)
            break;
        int const width = static_cast<int>(group->width());
        int const height = static_cast<int>(group->height());
        if (onRow > 0 && rowWidth + width + kGroupGap * onRow > limit) {
            ++row;
            onRow = 0;
            rowWidth = 0;
        }
        *group =
            GwPosition(onRow == 0 ? 0 : rowWidth + kGroupGap * onRow, (height + kRowGap) * row);
        rowWidth += width;
        ++onRow;
        widest = std::max(widest, rowWidth + kGroupGap * (onRow - 1));
        tallest = std::max(tallest, height);
    }
    int const rows = groups->count() > 0 ? row + 1 : 0;
    if (groups == &own)
        calculate(eRelease, 0, &own);
    return GwDimension(widest, (tallest + kRowGap) * rows);
}

void GwToolBar::sizeToolCtrl(int index) {
    if (mHandle == nullptr)
        return;
    callDefHandler(TB_AUTOSIZE, 0, 0);
    auto place = [this](int at, bool showAndEnable) {
        TBBUTTON found{};
        RECT rect{};
        if (!button(at, &found) || found.dwData == 0)
            return;
        auto* control = reinterpret_cast<GwControl*>(found.dwData);
        if (showAndEnable) {
            control->setVisible((found.fsState & TBSTATE_HIDDEN) == 0);
            control->setEnabled((found.fsState & TBSTATE_ENABLED) != 0);
        }
        if (callDefHandler(TB_GETITEMRECT, static_cast<WPARAM>(at),
                           reinterpret_cast<LPARAM>(&rect)) != 0)
            control->setPosition(GwPosition(rect.left, translateY(rect.bottom, false)));
    };
    if (index >= 0) {
        place(index, true);
        return;
    }
    int const count = sizeOf();
    for (int at = 0; at < count; ++at)
        place(at, false);
}

long long GwToolBar::toolHitTest(GwPosition& position) const {
    POINT const point{static_cast<LONG>(position.x()),
                      static_cast<LONG>(translateY(static_cast<int>(position.y()), false))};
    int const count = sizeOf();
    for (int index = 0; index < count; ++index) {
        TBBUTTON found{};
        RECT rect{};
        if (!button(index, &found) || (found.fsState & TBSTATE_HIDDEN) != 0 ||
            send(TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect)) ==
                0 ||
            !PtInRect(&rect, point))
            continue;
        if ((found.fsStyle & BTNS_SEP) == 0)
            return static_cast<unsigned int>(found.idCommand);
        auto* control = reinterpret_cast<GwControl*>(found.dwData);
        HWND child = control != nullptr ? static_cast<HWND>(control->window()) : nullptr;
        if (child != nullptr && GetParent(child) == static_cast<HWND>(mHandle))
            return GetWindowLongPtrA(child, GWL_ID);
        return -1;
    }
    return -1;
}

void GwToolBar::debugLayout() const {
    std::printf("GwToolBar::debugLayout [Start]\n");
    int const count = sizeOf();
    for (int index = 0; index < count; ++index) {
        TBBUTTON found{};
        RECT rect{};
        if (!button(index, &found))
            continue;
        send(TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
        auto* control = reinterpret_cast<GwControl*>(found.dwData);
        std::printf("[%02d] Id[%d] fsStyle[%02x] fsState[%02x] iBitmap[%d] dwData[%p][%s]\n", index,
                    found.idCommand, found.fsStyle, found.fsState, found.iBitmap,
                    static_cast<void*>(control), control != nullptr ? control->isA()->name() : "");
        std::printf("[%02d] Rect [%d,%d] [%d,%d]\n", index, static_cast<int>(rect.left),
                    static_cast<int>(rect.top), static_cast<int>(rect.right),
                    static_cast<int>(rect.bottom));
    }
    std::printf("GwToolBar::debugLayout [End]\n");
    std::fflush(stdout);
}
