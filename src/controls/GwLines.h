// The item-backed lines of a list box or a combo box: one implementation for both controls,
// parametrised by the control's messages.
//
// The platform keeps each line's text and, as item data, a pointer to the control's own copy
// of the line's item. Every search is defined as a walk from line 0 that reads each line's
// item data; sending one message per line makes that cost quadratic when a list is filled
// one item at a time. So the lines keep, beside the control, a mirror of the platform's item
// data in line order (a balanced tree that knows each line's position) and a map from item
// identifier to the lines whose copy has it. The mirror answers exactly what the walk over
// the platform's item data answers:
// - it is checked against the platform's line count at every operation and read afresh from
//   the platform when the two differ or when it was not read yet (a list wrapped with lines,
//   lines changed behind the control's procedure);
// - lines changed by other code through the control's own messages (adding, inserting,
//   deleting, resetting, setting item data), which pass the control's subclassed procedure,
//   are mirrored as they happen;
// - the identifier map can only say "no line has this identifier" or "look at these lines";
//   the lines it names are then compared in line order with the item's own operator==. It
//   serves searches by items of the library's item classes, whose equality requires equal
//   identifiers; an item of another class is compared with every line in order, as the walk
//   does (an item class that changes equality must register a class record of its own).
//
// Only the control's own copies count as items. A line with no item data, or with item data
// that other code set, is simply not a match for any search and is never deleted (a literal
// walk would read through such a pointer). Copies whose lines other code deleted are kept
// until remove(), the end of the window or the end of the control, then deleted: nothing
// leaks and nothing is deleted under other code's feet.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

class GwItem;

// The messages of one control kind.
struct GwLineMessages {
    unsigned int add;      // LB_ADDSTRING / CB_ADDSTRING
    unsigned int insert;   // LB_INSERTSTRING / CB_INSERTSTRING
    unsigned int remove;   // LB_DELETESTRING / CB_DELETESTRING
    unsigned int reset;    // LB_RESETCONTENT / CB_RESETCONTENT
    unsigned int count;    // LB_GETCOUNT / CB_GETCOUNT
    unsigned int getData;  // LB_GETITEMDATA / CB_GETITEMDATA
    unsigned int setData;  // LB_SETITEMDATA / CB_SETITEMDATA
    unsigned int dir;      // LB_DIR / CB_DIR: lines the mirror can only read back
    unsigned int addFile;  // LB_ADDFILE (0 for none)
    unsigned int setCount; // LB_SETCOUNT (0 for none)
};

extern GwLineMessages const gListBoxLines;
extern GwLineMessages const gComboBoxLines;

// The way to the control's platform procedure (the control's callDefHandler).
struct GwLineChannel {
    void* control;
    long long (*send)(void* control, unsigned int msg, unsigned long long wParam, long long lParam);

    long long operator()(unsigned int msg, unsigned long long wParam, long long lParam) const {
        return send(control, msg, wParam, lParam);
    }
};

// A copy of an item made by its class's factory from a GwEventData that carries it; null
// when the factory makes nothing or something that is no item.
GwItem* gwCopyItem(GwItem const& item);

class GwLines {
public:
    explicit GwLines(GwLineMessages const& messages);
    GwLines(GwLines const&) = delete;
    GwLines& operator=(GwLines const&) = delete;
    // Deletes every copy.
    ~GwLines();

    // Objects that share the window share its lines (an assigned control).
    void addRef() { ++mRefs; }
    // Deletes the lines (and their copies) with the last reference.
    void release();

    // Adds a line for the item, replacing a line equal to it (for an item with identifier).
    void add(GwLineChannel const& send, GwItem const& item, bool sorted);
    // Inserts a line at position; 0, negative or past the end appends. A line at position
    // equal to the item is replaced.
    void addAt(GwLineChannel const& send, int position, GwItem const& item);
    void remove(GwLineChannel const& send, GwItem const& item);
    void remove(GwLineChannel const& send, unsigned long long id);
    void removeAt(GwLineChannel const& send, int position);
    // Every line, and every copy.
    void removeAll(GwLineChannel const& send);

    // The first line whose copy has the identifier / is equal to the item; -1 for none.
    int find(GwLineChannel const& send, unsigned long long id);
    int find(GwLineChannel const& send, GwItem const& item);
    // The copy of the first line with the identifier; null for none.
    GwItem const* withId(GwLineChannel const& send, unsigned long long id);
    // The copy of a line; null for a line that holds none and for a position out of range.
    GwItem const* at(GwLineChannel const& send, int position);
    int count(GwLineChannel const& send);

    // Whether msg changes the lines; such a message that other code sends to the control
    // goes through pass(), which hands it to the platform and mirrors its effect.
    bool changes(unsigned long long msg) const;
    long long pass(GwLineChannel const& send, unsigned long long msg, unsigned long long wParam,
                   long long lParam);

    // The copies that the lines hold or keep (tests count them).
    std::size_t copies() const { return mCopies.size(); }

    // The shared empty items that lookups answer when nothing is found.
    static GwItem const& noItem();
    static GwItem const& noItemAt();

    // A line of the mirror (defined with the lines).
    struct Line;

private:
    // Reads the count; reads the platform's lines afresh when the mirror is not current.
    int sync(GwLineChannel const& send);
    void reread(GwLineChannel const& send, int count);
    // Inserts a mirror line at position holding data; claims data when it is a free copy.
    void insertLine(int position, void* data);
    // Takes the line at position out of the mirror; its copy stays (free) in mCopies.
    void eraseLine(int position);
    void setLine(int position, void* data);
    void clearLines();
    // Deletes a copy that the lines made (nothing for anything else).
    void dropCopy(GwItem* copy);
    // Sends the insertion (msg with wParam and the item's text) and stores a copy of the
    // item in the new line; nothing when the platform refuses the line.
    void insert(GwLineChannel const& send, unsigned int msg, long long wParam, GwItem const& item);
    // Stores a new copy of item in the line at position (the line exists and holds nothing).
    void storeCopy(GwLineChannel const& send, int position, GwItem const& item);
    // Sends a message that changes lines; false when the mirror changed meanwhile (a
    // handler called back into the lines), which leaves it to be read afresh.
    bool sendChange(GwLineChannel const& send, unsigned int msg, unsigned long long wParam,
                    long long lParam, long long& result);

    void claim(Line* line);
    void unclaim(Line* line);

    Line* lineAt(int position) const;
    static int positionOf(Line const* line);
    Line const* firstLineWithId(unsigned long long id) const;
    int firstWithId(unsigned long long id) const;
    // add() of an unsorted list when the mirror shows that nothing is to be replaced: the
    // line is appended without reading the count first. False when the checked way must
    // be taken.
    bool appended(GwLineChannel const& send, GwItem const& item);

    GwLineMessages const& mMessages;
    Line* mRoot = nullptr;
    bool mCurrent = false;
    std::uint64_t mChanges = 0;
    int mRefs = 1;
    // Every copy made and not yet deleted, with the line that holds it (null: none does).
    std::unordered_map<GwItem*, Line*> mCopies;
    // The lines holding a copy, by the copy's identifier.
    std::unordered_map<unsigned long long, std::vector<Line*>> mById;
};
