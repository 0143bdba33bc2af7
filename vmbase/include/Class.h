// Run-time class records: a name, parent names, an instance size and a factory.
#pragma once

#include "VmBaseExport.h"

class Object;
class EventData;

// The run-time record of a class: its name, its parents' names, its instance size and its
// factory.
//
// One record per class. Records are meant to be static objects: the name and the
// parent-name list are not copied and must outlive the record. A record is found by its
// exact name through a hash index; destroying the record removes it from the index.
// Parent names are resolved when asked, so parents may be registered in any order.
class VMBASE_API Class {
public:
    // Makes an instance of the class from the data it is given (null when it cannot).
    using Factory = Object* (*)(EventData const*);

    // parentNames: a null-terminated list of names, or null for a class without parents.
    Class(char const* name, char const** parentNames, long instanceSize, Factory factory);
    ~Class();

    Class(Class const&) = delete;
    Class& operator=(Class const&) = delete;

    // The record registered under exactly this name, or null. The first record registered
    // under a name keeps it while it lives.
    static Class const* lookup(char const* name);

    // The class's name.
    char const* name() const { return mName; }
    // The name of a record; "" for a null record.
    static char const* name(Class const* record);

    // The null-terminated parent-name list (null without parents).
    char const* const* parentNames() const { return mParentNames; }
    // The size of an instance in bytes.
    long instanceSize() const { return mInstanceSize; }
    // The factory, or null.
    Factory factory() const { return mFactory; }

    // Reflexive; follows the parent names transitively (through lookup). A parent name
    // without a record ends that branch.
    bool isSubclassOf(Class const* other) const;

    // The factory's result, or null when the record has no factory.
    Object* createInstance(EventData const* data) const;
    // As above; null for a null record.
    static Object* createInstance(Class const* record, EventData const* data);

    // How many records are registered now.
    static long count();

private:
    char const* mName;
    char const** mParentNames;
    long mInstanceSize;
    Factory mFactory;
};
