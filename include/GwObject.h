// Root of every library class, and the class-record mechanism that every class uses.
#pragma once

#include <Class.h>
#include <Event.h>
#include <Object.h>

#include "GwExport.h"

// In a class body: the static isa(), the virtual isA() and the checked assignment from
// any Object (which throws std::bad_cast for an object of another class).
#define GW_DECLARE_CLASS(Type)                                                                     \
public:                                                                                            \
    static ::Class const* isa();                                                                   \
    ::Class const* isA() const override;                                                           \
    Type& operator=(::Object const& other) override;

// In the body of a class that overrides the comparisons with any Object: the same
// comparisons between two objects of the class. Without them, a == b on two such objects is
// ambiguous under C++20 with its reversed form b == a (the parameter, an Object, is a base of
// the object's own type), which compilers reject or warn about.
#define GW_DECLARE_COMPARISON(Type)                                                                \
    bool operator==(Type const& other) const {                                                     \
        return operator==(static_cast<::Object const&>(other));                                    \
    }                                                                                              \
    int operator!=(Type const& other) const {                                                      \
        return operator!=(static_cast<::Object const&>(other));                                    \
    }

// The factory that class records of classes that cannot be made by name share.
VMGUI_API ::Object* gwNullFactory(::EventData const* data);

// Storage of one class's record and its parent-name list (writable static data).
template <class Type> struct GwClassRecord {
    static char const* parents[2]; // the parent's name and the terminating null
    static ::Class record;         // the class record isa() returns
};

// The factory of a class that can be made by name: its static newInstance.
template <class Type>::Object* gwMakeInstance(::EventData const* data) {
    return Type::newInstance(data);
}

// In the one source file of a class: its record and the members GW_DECLARE_CLASS declared.
// ParentList is a null-terminated list of names, or nullptr; Factory may be nullptr.
#define GW_CLASS_RECORD(Type, Name, Parent, ParentList, Factory)                                   \
    template <> char const* GwClassRecord<Type>::parents[2] = {Parent, nullptr};                   \
    template <>                                                                                    \
    ::Class GwClassRecord<Type>::record(Name, ParentList, static_cast<long>(sizeof(Type)),         \
                                        Factory);                                                  \
    ::Class const* Type::isa() {                                                                   \
        return &GwClassRecord<Type>::record;                                                       \
    }

// In the one source file of a class: isA() and the checked assignment from any Object.
#define GW_CLASS_MEMBERS(Type)                                                                     \
    ::Class const* Type::isA() const {                                                             \
        return isa();                                                                              \
    }                                                                                              \
    Type& Type::operator=(::Object const& other) {                                                 \
        return *this = dynamic_cast<Type const&>(other);                                           \
    }

// A class whose newInstance makes a real instance.
#define GW_CLASS_MAKES(Type, Name, Parent)                                                         \
    GW_CLASS_RECORD(Type, Name, Parent, GwClassRecord<Type>::parents, &gwMakeInstance<Type>)       \
    GW_CLASS_MEMBERS(Type)

// A class that cannot be made by name: its newInstance always answers null.
#define GW_CLASS_NULL(Type, Name, Parent)                                                          \
    GW_CLASS_RECORD(Type, Name, Parent, GwClassRecord<Type>::parents, &gwNullFactory)              \
    GW_CLASS_MEMBERS(Type)                                                                         \
    Type* Type::newInstance(::EventData const* data) {                                             \
        return static_cast<Type*>(gwNullFactory(data));                                            \
    }

// A class without a factory.
#define GW_CLASS_NONE(Type, Name, Parent)                                                          \
    GW_CLASS_RECORD(Type, Name, Parent, GwClassRecord<Type>::parents, nullptr)                     \
    GW_CLASS_MEMBERS(Type)

// The root of every library class. Each class declares, through GW_DECLARE_CLASS, a static
// isa() that returns its class record, a virtual isA() that returns the record of the
// object's own class, and operator=(Object const&), which copies from an object of the same
// class and throws std::bad_cast for any other (the only exception the library raises).
//
// A debug build of the library counts the objects that live (constructions less
// destructions, static objects included), so that a test or a soak run can see whether
// anything is left over; a release build counts nothing.
class VMGUI_API GwObject : public Object {
    GW_DECLARE_CLASS(GwObject)

public:
    // An object holds no state of its own; copies and moves copy nothing (but count).
    GwObject();
    GwObject(GwObject const& other);
    GwObject(GwObject&& other) noexcept;
    GwObject& operator=(GwObject const&) = default;
    GwObject& operator=(GwObject&&) = default;
    ~GwObject() override;

    // The number of library objects alive now in a debug build of the library; -1 in a
    // release build.
    static long liveObjects();
};
