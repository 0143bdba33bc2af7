// A short soak: a few hundred cycles of frame, viewport, dialog and metafile leave the live
// library objects and the USER and GDI handles exactly as they were after the warm-up, and
// the private bytes within 1 %; and the counts see what the library makes.
#include <gtest/gtest.h>

#include <windows.h>

#include <GwApplication.h>
#include <GwFrame.h>
#include <GwGC.h>
#include <GwMenu.h>
#include <GwObject.h>

#include "HandleCount.h"
#include "SoakCycle.h"

namespace {

class SoakApplication : public GwApplication {
public:
    SoakApplication() = default;
};

class SoakTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { soak::watchLibraryHandles(); }
    SoakApplication mApplication;
};

} // namespace

TEST_F(SoakTest, NothingGrowsOverThreeHundredCycles) {
    for (int cycle = 0; cycle < 30; ++cycle)
        ASSERT_TRUE(soak::runCycle().complete()) << "warm-up cycle " << cycle;
    soak::Figures const before = soak::measure();
    soak::Figures halfWay;
    for (int cycle = 0; cycle < 300; ++cycle) {
        ASSERT_TRUE(soak::runCycle().complete()) << "cycle " << cycle;
        if (cycle == 150)
            halfWay = soak::measure();
    }
    soak::Figures const after = soak::measure();
    EXPECT_EQ(after.objects, before.objects);
    EXPECT_EQ(after.user, before.user);
    EXPECT_EQ(after.gdi, before.gdi);
    EXPECT_LE(after.privateBytes, halfWay.privateBytes + halfWay.privateBytes / 100)
        << "the platform's heaps settle later than the counts: measured from half-way";
}

TEST_F(SoakTest, TheLiveObjectCountSeesAFrameAndItsParts) {
    if (GwObject::liveObjects() < 0)
        GTEST_SKIP() << "a release build of the library counts no objects";
    long const before = GwObject::liveObjects();
    auto* frame = new GwFrame(soak::kFrameId, soak::kMenuBar, true);
    EXPECT_GT(GwObject::liveObjects(), before + 2) << "frame, its resource, status bar, menus";
    DestroyWindow(static_cast<HWND>(frame->window()));
    EXPECT_EQ(GwObject::liveObjects(), before);
}

namespace {

// Draws a line in a colour and width of its own through a context on the window.
void drawLine(GwWindow* window) {
    GwGC gc(window, nullptr);
    gc.setColor(0x102030).setLineStyle(GwGC::eSolid, 3);
    gc.drawLine(GwPosition(0, 0), GwPosition(10, 10));
}

} // namespace

TEST_F(SoakTest, TheHandleCountSeesTheLibrarysWindowsMenusAndGdiObjects) {
    soak::HandleCount const before = soak::countHandles();
    auto* frame = new GwFrame(soak::kFrameId, soak::kMenuBar, true);
    soak::HandleCount const withFrame = soak::countHandles();
    EXPECT_GE(withFrame.user, before.user + 3) << "frame, status bar and menu bar";
    drawLine(frame); // fills the context's caches, which stay
    soak::HandleCount const cached = soak::countHandles();
    GwGC* gc = new GwGC(frame, nullptr);
    EXPECT_GT(soak::countHandles().gdi, cached.gdi) << "the context's device";
    delete gc;
    EXPECT_EQ(soak::countHandles().gdi, cached.gdi);
    drawLine(frame);
    EXPECT_EQ(soak::countHandles().gdi, cached.gdi);
    DestroyWindow(static_cast<HWND>(frame->window()));
    soak::HandleCount const after = soak::countHandles();
    EXPECT_EQ(after.user, before.user);
    EXPECT_EQ(after.gdi, cached.gdi);
}
