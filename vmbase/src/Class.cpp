// Run-time class records and their name index.
#include "Class.h"

#include <mutex>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

// The index from exact name to record. Records are static objects spread over many
// translation units and modules, so the index cannot itself be a static object: it is
// created by the first record that needs it and never destroyed, which lets records
// unregister in their destructors whatever the order of static destruction.
struct Registry {
    std::mutex mutex;
    std::unordered_map<std::string_view, Class const*> byName;
};

// Created on first use (thread-safe local static initialisation) and kept reachable
// from a static pointer until the process ends.
Registry& registry() {
    static Registry* const instance = new Registry;
    return *instance;
}

// Lookup with the registry already locked.
Class const* findLocked(Registry& reg, char const* name) {
    if (name == nullptr) {
        return nullptr;
    }
    auto it = reg.byName.find(std::string_view(name));
    return it == reg.byName.end() ? nullptr : it->second;
}

} // namespace

Class::Class(char const* name, char const** parentNames, long instanceSize, Factory factory)
    : mName(name != nullptr ? name : ""), mParentNames(parentNames), mInstanceSize(instanceSize),
      mFactory(factory) {
    if (name == nullptr) {
        return;
    }
    Registry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    // emplace leaves an existing entry alone: the first record keeps the name.
    reg.byName.emplace(std::string_view(mName), this);
}

Class::~Class() {
    Registry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    auto it = reg.byName.find(std::string_view(mName));
    if (it != reg.byName.end() && it->second == this) {
        reg.byName.erase(it);
    }
}

Class const* Class::lookup(char const* name) {
    if (name == nullptr) {
        return nullptr;
    }
    Registry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    return findLocked(reg, name);
}

char const* Class::name(Class const* record) {
    return record != nullptr ? record->mName : "";
}

bool Class::isSubclassOf(Class const* other) const {
    if (other == nullptr) {
        return false;
    }
    if (other == this) {
        return true;
    }

    Registry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);

    // Depth-first walk over the parent graph. Every record is expanded once, so cycles
    // in the parent names end the walk instead of looping.
    std::vector<Class const*> visited{this};
    std::vector<Class const*> pending{this};
    while (!pending.empty()) {
        Class const* record = pending.back();
        pending.pop_back();
        if (record->mParentNames == nullptr) {
            continue;
        }
        for (char const** parent = record->mParentNames; *parent != nullptr; ++parent) {
            Class const* parentRecord = findLocked(reg, *parent);
            if (parentRecord == nullptr) {
                continue; // an unknown parent ends this branch
            }
            if (parentRecord == other) {
                return true;
            }
            bool seen = false;
            for (Class const* v : visited) {
                if (v == parentRecord) {
                    seen = true;
                    break;
                }
            }
            if (!seen) {
                visited.push_back(parentRecord);
                pending.push_back(parentRecord);
            }
        }
    }
    return false;
}

Object* Class::createInstance(EventData const* data) const {
    return mFactory != nullptr ? mFactory(data) : nullptr;
}

Object* Class::createInstance(Class const* record, EventData const* data) {
    return record != nullptr ? record->createInstance(data) : nullptr;
}

long Class::count() {
    Registry& reg = registry();
    std::lock_guard<std::mutex> lock(reg.mutex);
    return static_cast<long>(reg.byName.size());
}
