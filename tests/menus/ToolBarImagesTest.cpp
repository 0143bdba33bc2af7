// Tool-bar images: bitmaps, the standard images, hot images and tool-bar resources (type 241)
// with their bitmaps, among them malformed ones.
#include <gtest/gtest.h>

#include <GwBitmap.h>
#include <GwResource.h>

#include "ToolBarTesting.h"

using namespace testing_toolbars;

namespace {

class ToolBarImagesTest : public ToolBarFixture {
protected:
    HIMAGELIST images(TestToolBar* bar) {
        return reinterpret_cast<HIMAGELIST>(SendMessageA(bar->hwnd(), TB_GETIMAGELIST, 0, 0));
    }
    HIMAGELIST hotImages(TestToolBar* bar) {
        return reinterpret_cast<HIMAGELIST>(SendMessageA(bar->hwnd(), TB_GETHOTIMAGELIST, 0, 0));
    }
    // The executable's bitmap id (32 x 15: two images).
    GwBitmap bitmap(unsigned long long id) {
        return GwBitmap(
            id, LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, 0));
    }

    GwResource executable;
};

constexpr unsigned long kMagenta = 0xFF00FF;

} // namespace

TEST_F(ToolBarImagesTest, ABitmapMakesAListOfSixteenByFifteenImages) {
    TestToolBar* bar = makeBar();
    int index = 77;
    bar->add(bitmap(300), kMagenta, index);
    EXPECT_EQ(index, 0);
    HIMAGELIST list = images(bar);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(ImageList_GetImageCount(list), 2);
    int cx = 0;
    int cy = 0;
    ImageList_GetIconSize(list, &cx, &cy);
    EXPECT_EQ(cx, 16);
    EXPECT_EQ(cy, 15);
    // A second bitmap goes into the same list.
    bar->add(bitmap(310), 0xFF, 0x00, 0xFF, index);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(images(bar), list);
    EXPECT_EQ(ImageList_GetImageCount(list), 4);
}

TEST_F(ToolBarImagesTest, ABitmapWithoutHandleAddsNothing) {
    TestToolBar* bar = makeBar();
    int index = 5;
    bar->add(GwBitmap(300), kMagenta, index);
    EXPECT_EQ(index, -1);
}

TEST_F(ToolBarImagesTest, TheStandardImagesWithoutAListSetADuplicateAndNoIndex) {
    TestToolBar* bar = makeBar();
    int index = 5;
    bar->add(GwBitmap(), kMagenta, index);
    EXPECT_EQ(index, -1);
    auto* standard = static_cast<HIMAGELIST>(GwToolBar::getStdImageList());
    ASSERT_NE(standard, nullptr);
    EXPECT_EQ(GwToolBar::gStdImageList, standard);
    EXPECT_EQ(GwToolBar::getStdImageList(), standard);
    EXPECT_EQ(ImageList_GetImageCount(standard), 15);
    HIMAGELIST list = images(bar);
    ASSERT_NE(list, nullptr);
    EXPECT_NE(list, standard);
    EXPECT_EQ(ImageList_GetImageCount(list), 15);
}

TEST_F(ToolBarImagesTest, TheStandardImagesAreCopiedBehindAnExistingList) {
    TestToolBar* bar = makeBar();
    bar->add(bitmap(300), kMagenta);
    int index = -1;
    bar->add(GwBitmap(), kMagenta, index);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(ImageList_GetImageCount(images(bar)), 17);
}

TEST_F(ToolBarImagesTest, HotImagesGetAListOfTheirOwn) {
    TestToolBar* bar = makeBar();
    EXPECT_EQ(bar->add(bitmap(300), kMagenta, bitmap(310), kMagenta), 0);
    HIMAGELIST hot = hotImages(bar);
    ASSERT_NE(hot, nullptr);
    EXPECT_EQ(ImageList_GetImageCount(hot), 2);
    // With a hot list, taking it leaves the bar without one; the normal bitmap goes into it.
    EXPECT_EQ(bar->add(bitmap(300), kMagenta, bitmap(310), kMagenta), 2);
    EXPECT_EQ(hotImages(bar), nullptr);
    EXPECT_EQ(ImageList_GetImageCount(hot), 4);
    ImageList_Destroy(hot);
}

TEST_F(ToolBarImagesTest, AResourceWithIdentifiersTenZeroElevenMakesTwoButtonsAroundASeparator) {
    TestToolBar* bar = makeBar();
    frame->add(bar, GwWindow::eTop); // one row: no button wraps
    int index = 9;
    bar->load(300, executable, kMagenta, index);
    EXPECT_EQ(index, 0);
    ASSERT_EQ(bar->sizeOf(), 3);
    TBBUTTON const ten = buttonAt(bar->hwnd(), 0);
    TBBUTTON const separator = buttonAt(bar->hwnd(), 1);
    TBBUTTON const eleven = buttonAt(bar->hwnd(), 2);
    EXPECT_EQ(ten.idCommand, 10);
    EXPECT_EQ(ten.iBitmap, 0);
    EXPECT_EQ(ten.fsState, TBSTATE_ENABLED);
    EXPECT_EQ(ten.fsStyle, BTNS_BUTTON);
    EXPECT_EQ(separator.fsStyle, BTNS_SEP);
    EXPECT_EQ(separator.iBitmap, 0);
    EXPECT_EQ(eleven.idCommand, 11);
    EXPECT_EQ(eleven.iBitmap, 1);
    HIMAGELIST list = images(bar);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(ImageList_GetImageCount(list), 2);
    // The button size is the image size plus 7.
    LRESULT const size = SendMessageA(bar->hwnd(), TB_GETBUTTONSIZE, 0, 0);
    EXPECT_EQ(LOWORD(size), 23);
    EXPECT_EQ(HIWORD(size), 22);
}

TEST_F(ToolBarImagesTest, ASecondResourceCountsItsImagesFromTheFirstAddedOne) {
    TestToolBar* bar = makeBar();
    bar->load(300, executable, kMagenta);
    int index = -1;
    bar->load(305, executable, kMagenta, index);
    EXPECT_EQ(index, 2);
    ASSERT_EQ(bar->sizeOf(), 5);
    EXPECT_EQ(buttonAt(bar->hwnd(), 3).idCommand, 12);
    EXPECT_EQ(buttonAt(bar->hwnd(), 3).iBitmap, 2);
    EXPECT_EQ(buttonAt(bar->hwnd(), 4).iBitmap, 3);
}

TEST_F(ToolBarImagesTest, AResourceWithHotImages) {
    TestToolBar* bar = makeBar();
    EXPECT_EQ(bar->load(300, kMagenta, 310, kMagenta, executable), 0);
    HIMAGELIST hot = hotImages(bar);
    ASSERT_NE(hot, nullptr);
    EXPECT_EQ(ImageList_GetImageCount(hot), 2);
    // A missing hot bitmap: the buttons are there, the answer is all ones.
    EXPECT_EQ(bar->load(305, kMagenta, 399, kMagenta, executable), -1);
    EXPECT_EQ(bar->sizeOf(), 5);
}

TEST_F(ToolBarImagesTest, MalformedOrMissingResourcesAddNothing) {
    TestToolBar* bar = makeBar();
    // 301: shorter than the header; 302: the count is larger than the data; 303: count 0;
    // 304: no bitmap; 399: no resource.
    for (unsigned long long id : {301ull, 302ull, 303ull, 304ull, 399ull}) {
        SCOPED_TRACE(id);
        int index = 5;
        bar->load(id, executable, kMagenta, index);
        EXPECT_EQ(index, -1);
        EXPECT_EQ(bar->sizeOf(), 0);
        EXPECT_EQ(images(bar), nullptr);
    }
    EXPECT_EQ(bar->load(302, kMagenta, 310, kMagenta, executable), -1);
    EXPECT_EQ(bar->sizeOf(), 0);
}
