#include <gtest/gtest.h>

#include <windows.h>

#include <GwApplication.h>
#include <GwItem.h>
#include <GwStartup.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "StartupHooks.h"

using namespace testing_startup;

namespace {

class TestApp : public GwApplication {
public:
    TestApp() = default;
    explicit TestApp(String const& name) : GwApplication(name) {}
    TestApp(TestApp const& other) = default;
};

// An application class with a record of its own.
class MyApp : public GwApplication {
    GW_DECLARE_CLASS(MyApp)

public:
    MyApp() = default;
    MyApp(MyApp const&) = default;
    MyApp& operator=(MyApp const&) = default;
};

// Each test starts and ends without a current application.
class Application : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(GwApplication::mTheApplication, nullptr);
        gVisits.clear();
    }
    void TearDown() override { EXPECT_EQ(GwApplication::mTheApplication, nullptr); }
};

std::string text(String const& string) {
    return string.c_str();
}

} // namespace

GW_CLASS_NONE(MyApp, "MyApp", "GwApplication")

TEST_F(Application, TheRecordHasNoFactory) {
    Class const* record = Class::lookup("GwApplication");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwApplication::isa());
    EXPECT_EQ(record->factory(), nullptr);
    ASSERT_NE(record->parentNames(), nullptr);
    EXPECT_STREQ(record->parentNames()[0], "GwObject");
    EXPECT_EQ(record->parentNames()[1], nullptr);
}

TEST_F(Application, ConstructionMakesItCurrent) {
    TestApp app;
    EXPECT_EQ(GwApplication::mTheApplication, &app);
    EXPECT_EQ(&GwApplication::current(), &app);
    EXPECT_EQ(app.instance(), GetModuleHandleA(nullptr));
}

TEST_F(Application, DestructionClearsTheCurrentApplication) {
    { TestApp app; }
    EXPECT_EQ(GwApplication::mTheApplication, nullptr);
}

TEST_F(Application, StartsWithNoArgumentsResultOrHelpName) {
    TestApp app;
    EXPECT_EQ(app.result(), 0);
    EXPECT_EQ(app.argc(), 0);
    EXPECT_EQ(app.argv(0), nullptr);
    EXPECT_EQ(text(app.HelpName()), "");
}

TEST_F(Application, ApplicationRunsHooksInTableOrder) {
    Hook one(1), two(2), three(3);
    {
        TestApp app;
        EXPECT_EQ(gVisits, (std::vector<int>{1, 2, 3}));
    }
    EXPECT_EQ(gVisits, (std::vector<int>{1, 2, 3, -1, -2, -3}));
}

TEST_F(Application, HookBehindAHoleIsNotRun) {
    auto one = std::make_unique<Hook>(1);
    auto two = std::make_unique<Hook>(2);
    auto three = std::make_unique<Hook>(3);
    two.reset();
    {
        TestApp app;
        EXPECT_EQ(gVisits, std::vector<int>{1});
    }
    EXPECT_EQ(gVisits, (std::vector<int>{1, -1}));
}

TEST_F(Application, SecondApplicationIsInert) {
    Hook hook(1);
    TestApp first;
    {
        TestApp second(String("Second"));
        EXPECT_EQ(&GwApplication::current(), &first);
        EXPECT_EQ(gVisits, std::vector<int>{1});
        EXPECT_EQ(text(second.name()), "Second");
    }
    EXPECT_EQ(&GwApplication::current(), &first) << "the inert one's end changes nothing";
    EXPECT_EQ(gVisits, std::vector<int>{1});
}

TEST_F(Application, ACopyOfTheCurrentApplicationIsInert) {
    Hook hook(1);
    TestApp first(String("First"));
    first.setResult(4);
    {
        TestApp copy(first);
        EXPECT_EQ(&GwApplication::current(), &first);
        EXPECT_EQ(text(copy.name()), "First");
        EXPECT_EQ(copy.result(), 4);
    }
    EXPECT_EQ(gVisits, std::vector<int>{1});
}

TEST_F(Application, NamedConstructorSetsTheName) {
    TestApp app(String("Editor"));
    EXPECT_EQ(text(app.name()), "Editor");
}

TEST_F(Application, NameFallsBackToTheRuntimeClassName) {
    MyApp app;
    EXPECT_EQ(text(app.name()), "MyApp");
}

TEST_F(Application, SetNameReplacesTheClassName) {
    MyApp app;
    app.setName("Rechner");
    EXPECT_EQ(text(app.name()), "Rechner");
    app.setName("");
    EXPECT_EQ(text(app.name()), "MyApp");
}

TEST_F(Application, HelpNameIsKept) {
    TestApp app;
    EXPECT_EQ(&app.setHelpName("hilfe.hlp"), &app);
    EXPECT_EQ(text(app.HelpName()), "hilfe.hlp");
}

TEST_F(Application, ArgvBeyondTheCountIsNull) {
    char const* const arguments[] = {"prog.exe", "-v", nullptr};
    TestApp app;
    EXPECT_EQ(&app.setArgs(2, arguments), &app);
    EXPECT_EQ(app.argc(), 2);
    EXPECT_STREQ(app.argv(0), "prog.exe");
    EXPECT_STREQ(app.argv(1), "-v");
    EXPECT_EQ(app.argv(2), nullptr);
    EXPECT_EQ(app.argv(100), nullptr);
}

TEST_F(Application, ResultIsKept) {
    TestApp app;
    EXPECT_EQ(&app.setResult(3), &app);
    EXPECT_EQ(app.result(), 3);
}

TEST_F(Application, PathOfTypeOneEndsWithTheSeparator) {
    char file[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, file, MAX_PATH);
    std::string expected(file);
    expected.erase(expected.find_last_of("\\/") + 1);

    TestApp app;
    std::string path = text(app.path(GwApplication::eExecutableDirectory));
    EXPECT_EQ(path, expected);
    ASSERT_FALSE(path.empty());
    EXPECT_TRUE(path.back() == '\\' || path.back() == '/');
}

TEST_F(Application, PathOfOtherTypesIsEmpty) {
    TestApp app;
    EXPECT_EQ(text(app.path(static_cast<GwApplication::ePathType>(0))), "");
    EXPECT_EQ(text(app.path(static_cast<GwApplication::ePathType>(2))), "");
}

TEST_F(Application, SystemValuesComeFromTheSystem) {
    TestApp app;
    LONG units = GetDialogBaseUnits();
    UINT lines = 0;
    ASSERT_TRUE(SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0));
    EXPECT_EQ(app.systemValue(GwApplication::eScreenWidth), GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(app.systemValue(GwApplication::eScreenHeight), GetSystemMetrics(SM_CYSCREEN));
    EXPECT_EQ(app.systemValue(GwApplication::eDialogBaseUnitX), LOWORD(units));
    EXPECT_EQ(app.systemValue(GwApplication::eDialogBaseUnitY), HIWORD(units));
    EXPECT_EQ(app.systemValue(GwApplication::eWheelScrollLines), static_cast<long>(lines));
    EXPECT_GT(app.systemValue(GwApplication::eScreenWidth), 0);
}

TEST_F(Application, WheelDeltaIsAlways120) {
    TestApp app;
    EXPECT_EQ(app.systemValue(GwApplication::eWheelDelta), 120);
}

TEST_F(Application, UnknownSystemValueIsZero) {
    TestApp app;
    EXPECT_EQ(app.systemValue(static_cast<GwApplication::eSystemValue>(7)), 0);
    EXPECT_EQ(app.systemValue(static_cast<GwApplication::eSystemValue>(0)), 0);
    EXPECT_EQ(app.systemValue(static_cast<GwApplication::eSystemValue>(-1)), 0);
}

TEST_F(Application, BaseInstanceHooksAnswerTrue) {
    TestApp app;
    EXPECT_TRUE(app.initInstance());
    EXPECT_TRUE(app.exitInstance());
}

TEST_F(Application, ExitPostsAQuitMessage) {
    TestApp app;
    MSG pending;
    while (PeekMessageA(&pending, nullptr, 0, 0, PM_REMOVE)) {
    }
    EXPECT_EQ(&app.exit(), &app);
    MSG quit = {};
    ASSERT_TRUE(PeekMessageA(&quit, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(quit.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(quit.wParam, 0u);
}

namespace {

int gTicks = 0;

void CALLBACK exitOnSecondTick(HWND, UINT, UINT_PTR timer, DWORD) {
    if (++gTicks == 2) {
        KillTimer(nullptr, timer);
        GwApplication::current().exit();
    }
}

// Ends a loop that the test failed to end, so that the run goes on.
struct Watchdog {
    explicit Watchdog(DWORD milliseconds)
        : thread(GetCurrentThreadId()), done(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
          limit(milliseconds) {
        worker = CreateThread(nullptr, 0, &Watchdog::watch, this, 0, nullptr);
    }
    ~Watchdog() {
        SetEvent(done);
        WaitForSingleObject(worker, INFINITE);
        CloseHandle(worker);
        CloseHandle(done);
    }
    static DWORD WINAPI watch(void* self) {
        auto* dog = static_cast<Watchdog*>(self);
        if (WaitForSingleObject(dog->done, dog->limit) == WAIT_TIMEOUT) {
            dog->barked = true;
            PostThreadMessageA(dog->thread, WM_QUIT, 0, 0);
        }
        return 0;
    }
    DWORD thread;
    HANDLE done;
    DWORD limit;
    HANDLE worker = nullptr;
    volatile bool barked = false;
};

} // namespace

TEST_F(Application, ExitEndsTheLoop) {
    TestApp app;
    gTicks = 0;
    ASSERT_NE(SetTimer(nullptr, 0, 10, &exitOnSecondTick), 0u);
    Watchdog watchdog(10000);
    EXPECT_EQ(&app.run(), &app);
    EXPECT_FALSE(watchdog.barked) << "the loop did not end by itself";
    EXPECT_EQ(gTicks, 2) << "the loop dispatched the timer until exit";
}

TEST_F(Application, ExitBeforeRunEndsTheLoopAtOnce) {
    TestApp app;
    app.exit();
    Watchdog watchdog(10000);
    app.run();
    EXPECT_FALSE(watchdog.barked);
}

TEST_F(Application, AssigningAnObjectOfAnotherClassThrows) {
    TestApp app;
    GwItem item;
    GwApplication& base = app;
    EXPECT_THROW(base = static_cast<Object const&>(item), std::bad_cast);
}

TEST_F(Application, IsAnswersTheRecordOfTheRuntimeClass) {
    MyApp app;
    EXPECT_EQ(app.isA(), MyApp::isa());
    EXPECT_TRUE(app.isA()->isSubclassOf(GwApplication::isa()));
    EXPECT_TRUE(app.isA()->isSubclassOf(GwObject::isa()));
}
