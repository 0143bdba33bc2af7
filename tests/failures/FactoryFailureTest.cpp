// Class-record factories given data they cannot make an instance from: every record of the
// library, found through the isa() functions that VmGui.dll exports, answers null or a plain
// object of its class, and none throws.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include <VmGui.h>

#include "BreakpointCounter.h"
#include "ImportHook.h"
#include "TestWindows.h"

namespace {

// The records of every class that the module exports an isa() for (the mangled names
// "_ZN...3isaEv" of the static member functions).
std::vector<Class const*> exportedRecords(HMODULE module) {
    std::vector<Class const*> records;
    auto* const base = reinterpret_cast<BYTE*>(module);
    IMAGE_DATA_DIRECTORY const& directory =
        testing_windows::imageDirectory(module, IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (directory.VirtualAddress == 0)
        return records;
    auto const* const exports =
        reinterpret_cast<IMAGE_EXPORT_DIRECTORY const*>(base + directory.VirtualAddress);
    auto const* const names = reinterpret_cast<DWORD const*>(base + exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
        std::string const name = reinterpret_cast<char const*>(base + names[i]);
        if (name.rfind("_ZN", 0) != 0 || name.size() < 9 ||
            name.compare(name.size() - 6, 6, "3isaEv") != 0)
            continue;
        using Isa = Class const* (*)();
        auto const isa =
            reinterpret_cast<Isa>(reinterpret_cast<void*>(GetProcAddress(module, name.c_str())));
        if (isa != nullptr && isa() != nullptr)
            records.push_back(isa());
    }
    return records;
}

} // namespace

TEST(FactoryFailure, EveryFactoryGivenUnsuitableDataAnswersNullOrAPlainObjectAndThrowsNothing) {
    testing_windows::ScopedApplication application;
    std::vector<Class const*> const records = exportedRecords(GetModuleHandleA("VmGui.dll"));
    ASSERT_GE(records.size(), 50u) << "the library's classes are found through their exports";

    GwItem item(7);
    GwEventData const empty;
    GwEventData const onlyItem(item);
    EventData const foreign;
    EventData const* const unsuitable[] = {nullptr, &empty, &onlyItem, &foreign};

    int factories = 0;
    for (Class const* record : records) {
        if (record->factory() == nullptr)
            continue;
        ++factories;
        for (EventData const* data : unsuitable) {
            BreakpointCounter breaks;
            Object* made = nullptr;
            EXPECT_NO_THROW(made = Class::createInstance(record, data)) << record->name();
            EXPECT_EQ(breaks.count(), 0) << record->name();
            if (made == nullptr)
                continue;
            // Something was made without a window to bind: an object of the record's class.
            EXPECT_EQ(made->isA(), record) << record->name();
            if (auto* window = dynamic_cast<GwWindow*>(made)) {
                EXPECT_EQ(window->window(), nullptr) << record->name();
            }
            delete made;
        }
    }
    EXPECT_GT(factories, 30);
}
