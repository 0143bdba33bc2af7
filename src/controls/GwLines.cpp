#include "controls/GwLines.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "GwEventData.h"
#include "GwItem.h"
#include "GwMenu.h"
#include "GwTab.h"

GwLineMessages const gListBoxLines = {
    LB_ADDSTRING,   LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT, LB_GETCOUNT,
    LB_GETITEMDATA, LB_SETITEMDATA,  LB_DIR,          LB_ADDFILE,      LB_SETCOUNT};
GwLineMessages const gComboBoxLines = {CB_ADDSTRING,
                                       CB_INSERTSTRING,
                                       CB_DELETESTRING,
                                       CB_RESETCONTENT,
                                       CB_GETCOUNT,
                                       CB_GETITEMDATA,
                                       CB_SETITEMDATA,
                                       CB_DIR,
                                       0,
                                       0};

GwItem* gwCopyItem(GwItem const& item) {
    GwEventData const data(item);
    Object* made = Class::createInstance(item.isA(), &data);
    if (auto* copy = dynamic_cast<GwItem*>(made))
        return copy;
    delete made;
    return nullptr;
}

// One line of the mirror: a node of a tree in line order (a treap whose nodes count their
// subtrees, so that a line's position follows from its path to the root).
struct GwLines::Line {
    Line* left = nullptr;
    Line* right = nullptr;
    Line* parent = nullptr;
    std::uint32_t priority = 0;
    int size = 1;
    void* data = nullptr;   // the platform's item data of the line
    GwItem* copy = nullptr; // data, when it is a copy that this line holds
};

namespace {

using Line = GwLines::Line;

long long const kError = -1; // LB_ERR, CB_ERR

int sizeOf(Line const* line) {
    return line != nullptr ? line->size : 0;
}

void resize(Line* line) {
    line->size = 1 + sizeOf(line->left) + sizeOf(line->right);
}

std::uint32_t nextPriority() {
    static std::uint32_t state = 0x9E3779B9u;
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

// The first `count` lines of tree into first, the rest into rest.
void split(Line* tree, int count, Line*& first, Line*& rest) {
    if (tree == nullptr) {
        first = rest = nullptr;
        return;
    }
    if (sizeOf(tree->left) < count) {
        split(tree->right, count - sizeOf(tree->left) - 1, tree->right, rest);
        if (tree->right != nullptr)
            tree->right->parent = tree;
        first = tree;
    } else {
        split(tree->left, count, first, tree->left);
        if (tree->left != nullptr)
            tree->left->parent = tree;
        rest = tree;
    }
    resize(tree);
}

Line* merge(Line* first, Line* rest) {
    if (first == nullptr)
        return rest;
    if (rest == nullptr)
        return first;
    if (first->priority > rest->priority) {
        first->right = merge(first->right, rest);
        first->right->parent = first;
        resize(first);
        return first;
    }
    rest->left = merge(first, rest->left);
    rest->left->parent = rest;
    resize(rest);
    return rest;
}

Line* rooted(Line* tree) {
    if (tree != nullptr)
        tree->parent = nullptr;
    return tree;
}

// Visits the lines in order with their positions until visit answers false.
template <class Visit> void inOrder(Line* root, Visit visit) {
    std::vector<Line*> path;
    int position = 0;
    Line* line = root;
    while (line != nullptr || !path.empty()) {
        while (line != nullptr) {
            path.push_back(line);
            line = line->left;
        }
        line = path.back();
        path.pop_back();
        if (!visit(line, position++))
            return;
        line = line->right;
    }
}

// Item classes whose operator== answers true only for equal identifiers.
bool equalityNeedsId(GwItem const& item) {
    Class const* record = item.isA();
    return record == GwItem::isa() || record == GwTextItem::isa() || record == GwMenuItem::isa() ||
           record == GwTabItem::isa();
}

} // namespace

GwLines::GwLines(GwLineMessages const& messages) : mMessages(messages) {}

GwLines::~GwLines() {
    clearLines();
    for (auto const& [copy, line] : mCopies)
        delete copy;
}

void GwLines::release() {
    if (--mRefs == 0)
        delete this;
}

GwItem const& GwLines::noItem() {
    static GwItem const none;
    return none;
}

GwItem const& GwLines::noItemAt() {
    static GwItem const none;
    return none;
}

GwLines::Line* GwLines::lineAt(int position) const {
    Line* line = mRoot;
    while (line != nullptr) {
        int left = sizeOf(line->left);
        if (position < left) {
            line = line->left;
        } else if (position == left) {
            return line;
        } else {
            position -= left + 1;
            line = line->right;
        }
    }
    return nullptr;
}

int GwLines::positionOf(Line const* line) {
    int position = sizeOf(line->left);
    for (; line->parent != nullptr; line = line->parent) {
        if (line == line->parent->right)
            position += sizeOf(line->parent->left) + 1;
    }
    return position;
}

void GwLines::claim(Line* line) {
    auto found = mCopies.find(static_cast<GwItem*>(line->data));
    if (found == mCopies.end() || found->second != nullptr)
        return;
    found->second = line;
    line->copy = found->first;
    mById[line->copy->id()].push_back(line);
}

void GwLines::unclaim(Line* line) {
    if (line->copy == nullptr)
        return;
    mCopies[line->copy] = nullptr;
    auto found = mById.find(line->copy->id());
    if (found != mById.end()) {
        std::vector<Line*>& lines = found->second;
        lines.erase(std::find(lines.begin(), lines.end(), line));
        if (lines.empty())
            mById.erase(found);
    }
    line->copy = nullptr;
}

void GwLines::insertLine(int position, void* data) {
    auto* line = new Line;
    line->priority = nextPriority();
    line->data = data;
    Line* first;
    Line* rest;
    split(mRoot, position, first, rest);
    mRoot = rooted(merge(merge(rooted(first), line), rooted(rest)));
    claim(line);
    ++mChanges;
}

void GwLines::eraseLine(int position) {
    Line* first;
    Line* rest;
    Line* line;
    split(mRoot, position, first, rest);
    split(rooted(rest), 1, line, rest);
    mRoot = rooted(merge(rooted(first), rooted(rest)));
    if (line != nullptr) {
        unclaim(line);
        delete line;
    }
    ++mChanges;
}

void GwLines::setLine(int position, void* data) {
    Line* line = lineAt(position);
    if (line == nullptr) {
        mCurrent = false;
        return;
    }
    unclaim(line);
    line->data = data;
    claim(line);
    ++mChanges;
}

void GwLines::clearLines() {
    std::vector<Line*> lines;
    inOrder(mRoot, [&lines](Line* line, int) {
        lines.push_back(line);
        return true;
    });
    for (Line* line : lines)
        delete line;
    mRoot = nullptr;
    mById.clear();
    for (auto& [copy, line] : mCopies)
        line = nullptr;
    ++mChanges;
}

void GwLines::dropCopy(GwItem* copy) {
    auto found = mCopies.find(copy);
    if (found == mCopies.end())
        return;
    if (found->second != nullptr)
        unclaim(found->second);
    mCopies.erase(found);
    delete copy;
}

int GwLines::sync(GwLineChannel const& send) {
    long long count = send(mMessages.count, 0, 0);
    if (count < 0)
        count = 0;
    if (!mCurrent || count != sizeOf(mRoot))
        reread(send, static_cast<int>(count));
    return static_cast<int>(count);
}

void GwLines::reread(GwLineChannel const& send, int count) {
    clearLines();
    std::uint64_t const before = mChanges;
    std::vector<void*> data(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        data[static_cast<std::size_t>(i)] =
            reinterpret_cast<void*>(static_cast<LONG_PTR>(send(mMessages.getData, i, 0)));
    if (mChanges != before) // the lines changed while they were read
        return;
    for (int i = 0; i < count; ++i)
        insertLine(i, data[static_cast<std::size_t>(i)]);
    mCurrent = true;
}

bool GwLines::sendChange(GwLineChannel const& send, unsigned int msg, unsigned long long wParam,
                         long long lParam, long long& result) {
    std::uint64_t const before = mChanges;
    result = send(msg, wParam, lParam);
    if (mChanges == before)
        return true;
    mCurrent = false;
    return false;
}

void GwLines::storeCopy(GwLineChannel const& send, int position, GwItem const& item) {
    GwItem* copy = gwCopyItem(item);
    if (copy == nullptr)
        return;
    mCopies.emplace(copy, nullptr);
    long long result;
    bool const current =
        sendChange(send, mMessages.setData, static_cast<unsigned long long>(position),
                   reinterpret_cast<LONG_PTR>(copy), result);
    if (result == kError)
        dropCopy(copy);
    else if (current && mCurrent)
        setLine(position, copy);
}

GwLines::Line const* GwLines::firstLineWithId(unsigned long long id) const {
    auto found = mById.find(id);
    if (found == mById.end())
        return nullptr;
    std::vector<Line*> const& lines = found->second;
    if (lines.size() == 1)
        return lines.front();
    Line const* first = nullptr;
    int firstPosition = 0;
    for (Line const* line : lines) {
        int const position = positionOf(line);
        if (first == nullptr || position < firstPosition) {
            first = line;
            firstPosition = position;
        }
    }
    return first;
}

int GwLines::firstWithId(unsigned long long id) const {
    Line const* line = firstLineWithId(id);
    return line != nullptr ? positionOf(line) : -1;
}

GwItem const* GwLines::withId(GwLineChannel const& send, unsigned long long id) {
    sync(send);
    Line const* line = firstLineWithId(id);
    return line != nullptr ? line->copy : nullptr;
}

int GwLines::find(GwLineChannel const& send, unsigned long long id) {
    sync(send);
    return firstWithId(id);
}

int GwLines::find(GwLineChannel const& send, GwItem const& item) {
    sync(send);
    if (equalityNeedsId(item)) {
        auto found = mById.find(item.id());
        if (found == mById.end())
            return -1;
        std::vector<std::pair<int, GwItem const*>> candidates;
        for (Line const* line : found->second)
            candidates.emplace_back(positionOf(line), line->copy);
        std::sort(candidates.begin(), candidates.end(),
                  [](auto const& a, auto const& b) { return a.first < b.first; });
        for (auto const& [position, copy] : candidates) {
            if (item.operator==(*copy))
                return position;
        }
        return -1;
    }
    int match = -1;
    inOrder(mRoot, [&item, &match](Line* line, int position) {
        if (line->copy != nullptr && item.operator==(*line->copy)) {
            match = position;
            return false;
        }
        return true;
    });
    return match;
}

GwItem const* GwLines::at(GwLineChannel const& send, int position) {
    int const count = sync(send);
    if (position < 0 || position >= count)
        return nullptr;
    Line const* line = lineAt(position);
    return line != nullptr ? line->copy : nullptr;
}

int GwLines::count(GwLineChannel const& send) {
    return sync(send);
}

bool GwLines::appended(GwLineChannel const& send, GwItem const& item) {
    // Nothing to replace as far as the mirror knows: no line holds a copy with the item's
    // identifier (a class whose equality needs it), or no line holds a copy at all.
    bool const noMatch = item.id() == ~0ull || mCopies.empty() ||
                         (equalityNeedsId(item) && mById.count(item.id()) == 0);
    if (!mCurrent || !noMatch)
        return false;
    // The new last line's position checks the mirror against the platform, in place of the
    // line count.
    int const expected = sizeOf(mRoot);
    long long position;
    bool const current = sendChange(send, mMessages.insert, ~0ull,
                                    reinterpret_cast<LONG_PTR>(item.text().c_str()), position);
    if (position < 0)
        return true; // refused: nothing stored
    if (current && mCurrent && position == expected) {
        insertLine(expected, nullptr);
        storeCopy(send, expected, item);
        return true;
    }
    // The lines changed behind the mirror: the line goes again, and the checked way follows.
    mCurrent = false;
    send(mMessages.remove, static_cast<unsigned long long>(position), 0);
    return false;
}

void GwLines::add(GwLineChannel const& send, GwItem const& item, bool sorted) {
    if (!sorted && appended(send, item))
        return;
    long long replaced = -1;
    if (item.id() != ~0ull) {
        int const position = find(send, item);
        if (position >= 0) {
            removeAt(send, position);
            replaced = position;
        }
    } else {
        sync(send);
    }
    insert(send, sorted ? mMessages.add : mMessages.insert, sorted ? 0 : replaced, item);
}

void GwLines::addAt(GwLineChannel const& send, int position, GwItem const& item) {
    int const count = sync(send);
    long long insertAt = -1;
    if (position > 0 && position < count) {
        insertAt = position;
        GwItem const* old = lineAt(position)->copy;
        if (old != nullptr && item.operator==(*old))
            removeAt(send, position);
    }
    insert(send, mMessages.insert, insertAt, item);
}

void GwLines::insert(GwLineChannel const& send, unsigned int msg, long long wParam,
                     GwItem const& item) {
    long long position;
    bool const current = sendChange(send, msg, static_cast<unsigned long long>(wParam),
                                    reinterpret_cast<LONG_PTR>(item.text().c_str()), position);
    if (position < 0)
        return;
    if (current && mCurrent)
        insertLine(static_cast<int>(position), nullptr);
    storeCopy(send, static_cast<int>(position), item);
}

void GwLines::removeAt(GwLineChannel const& send, int position) {
    int const count = sync(send);
    if (position >= count)
        return;
    // A negative position goes to the platform as it is (which refuses it).
    GwItem* old = position >= 0 ? lineAt(position)->copy : nullptr;
    long long result;
    if (sendChange(send, mMessages.remove, static_cast<unsigned long long>(position), 0, result) &&
        result != kError) {
        if (position >= 0)
            eraseLine(position);
        else
            mCurrent = false;
    }
    if (result != kError)
        dropCopy(old);
}

void GwLines::remove(GwLineChannel const& send, GwItem const& item) {
    int const position = find(send, item);
    if (position >= 0)
        removeAt(send, position);
}

void GwLines::remove(GwLineChannel const& send, unsigned long long id) {
    int const position = find(send, id);
    if (position >= 0)
        removeAt(send, position);
}

void GwLines::removeAll(GwLineChannel const& send) {
    sync(send);
    // Lines lose their item data before the copies go, so that nothing (WM_DELETEITEM to
    // the owner, say) meets a deleted copy.
    std::vector<int> held;
    inOrder(mRoot, [&held](Line* line, int position) {
        if (line->copy != nullptr)
            held.push_back(position);
        return true;
    });
    for (int position : held)
        send(mMessages.setData, static_cast<unsigned long long>(position), 0);
    send(mMessages.reset, 0, 0);
    clearLines();
    mCurrent = false;
    std::vector<GwItem*> copies;
    for (auto const& [copy, line] : mCopies)
        copies.push_back(copy);
    mCopies.clear();
    for (GwItem* copy : copies)
        delete copy;
}

bool GwLines::changes(unsigned long long msg) const {
    if (msg == 0)
        return false;
    return msg == mMessages.add || msg == mMessages.insert || msg == mMessages.remove ||
           msg == mMessages.reset || msg == mMessages.setData || msg == mMessages.dir ||
           msg == mMessages.addFile || msg == mMessages.setCount;
}

long long GwLines::pass(GwLineChannel const& send, unsigned long long msg,
                        unsigned long long wParam, long long lParam) {
    auto const message = static_cast<unsigned int>(msg);
    if (!mCurrent)
        return send(message, wParam, lParam);
    long long result;
    if (!sendChange(send, message, wParam, lParam, result))
        return result;
    int const size = sizeOf(mRoot);
    auto const index = static_cast<long long>(static_cast<int>(wParam));
    if (message == mMessages.add || message == mMessages.insert) {
        if (result >= 0 && result <= size)
            insertLine(static_cast<int>(result),
                       reinterpret_cast<void*>(static_cast<LONG_PTR>(
                           send(mMessages.getData, static_cast<unsigned long long>(result), 0))));
        else if (result >= 0)
            mCurrent = false;
    } else if (message == mMessages.remove) {
        if (result != kError && index >= 0 && index < size)
            eraseLine(static_cast<int>(index));
        else if (result != kError)
            mCurrent = false;
    } else if (message == mMessages.reset) {
        clearLines();
    } else if (message == mMessages.setData) {
        if (result != kError)
            setLine(static_cast<int>(index), reinterpret_cast<void*>(lParam));
    } else {
        mCurrent = false;
    }
    return result;
}
