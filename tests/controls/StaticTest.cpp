// Static texts, group boxes and images: their windows, loading images by type from files and
// resources, freeing the image shown before, and the squeezed painting read back as pixels.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include <GwEventData.h>
#include <GwResource.h>
#include <GwStatic.h>

#include "ControlsTesting.h"

using namespace testing_controls;

namespace {

GwImage* imageFor(HWND hwnd) {
    GwEventData const data(hwnd);
    return GwImage::newInstance(&data);
}

// A file of the test program's folder that a test writes and removes.
std::string scratchFile(char const* name) {
    char folder[MAX_PATH] = {};
    GetTempPathA(sizeof folder, folder);
    return std::string(folder) + name;
}

HANDLE shownImage(HWND hwnd, UINT type) {
    return reinterpret_cast<HANDLE>(SendMessageA(hwnd, STM_GETIMAGE, type, 0));
}

// A static of the image type at 10,10 with a fixed client size.
HWND imageStatic(HWND parent, DWORD type, int width = 100, int height = 100) {
    return CreateWindowExA(0, "Static", "", WS_CHILD | WS_VISIBLE | type, 10, 10, width, height,
                           parent, reinterpret_cast<HMENU>(300), GetModuleHandleA(nullptr),
                           nullptr);
}

} // namespace

// ---- Texts and group boxes

TEST_F(ControlTest, ATextIsAStaticLabelWithTheControlStyles) {
    GwText label(parent(), 200, "Schriftgröße:");
    HWND const hwnd = hwndOf(label);
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(classNameOf(hwnd), "Static");
    EXPECT_EQ(styleOf(hwnd) & 0xFFFF00FF, 0x50030000);
    EXPECT_EQ(GetDlgCtrlID(hwnd), 200);
    EXPECT_EQ(textOf(hwnd), "Schriftgröße:");
    label.setText("Größe");
    EXPECT_EQ(textOf(hwnd), "Größe");
    EXPECT_EQ(label.text(), String("Größe"));
    EXPECT_EQ(label.isA(), GwText::isa());
}

TEST_F(ControlTest, AGroupBoxIsAButtonWindowOfTheGroupBoxType) {
    GwGroupBox box(parent(), 201, "Ausrichtung");
    HWND const hwnd = hwndOf(box);
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(classNameOf(hwnd), "Button");
    EXPECT_EQ(styleOf(hwnd) & 0xFFFF00FF, 0x50030007);
    EXPECT_EQ(textOf(hwnd), "Ausrichtung");
    EXPECT_TRUE(box.isA()->isSubclassOf(GwStatic::isa()));
    Recorder recorder;
    box.add(&recorder);
    SetWindowPos(hwnd, nullptr, 10, 10, 100, 60, SWP_NOZORDER);
    click(hwnd, 20, 20);
    for (Call const& call : recorder.calls) {
        EXPECT_NE(call.callback, "activate");
        EXPECT_NE(call.callback, "value");
    }
}

TEST_F(ControlTest, CopiesOfStaticsCloneTheirWindows) {
    GwText label(parent(), 202, "Links");
    GwText copy(label);
    ASSERT_NE(copy.window(), nullptr);
    EXPECT_NE(copy.window(), label.window());
    EXPECT_EQ(textOf(hwndOf(copy)), "Links");
    EXPECT_EQ(copy.isA(), GwText::isa());
    GwGroupBox box(parent(), 203, "Rahmen");
    GwGroupBox boxCopy(box);
    EXPECT_EQ(classNameOf(hwndOf(boxCopy)), "Button");
}

// ---- Images

TEST_F(ControlTest, AnImageOfAnotherTypeThanTheStaticIsNotLoaded) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP);
    GwImage* const image = imageFor(hwnd);
    ASSERT_NE(image, nullptr);
    GwResource const executable;
    image->setImage(8102, executable, GwImage::eIcon, false);
    EXPECT_EQ(shownImage(hwnd, IMAGE_ICON), nullptr);
    EXPECT_EQ(shownImage(hwnd, IMAGE_BITMAP), nullptr);
    image->setImage(8100, executable, GwImage::eEnhMetaFile, false);
    EXPECT_EQ(shownImage(hwnd, IMAGE_BITMAP), nullptr);
    image->setImage(8100, executable, GwImage::eBitmap, false);
    EXPECT_NE(shownImage(hwnd, IMAGE_BITMAP), nullptr);
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, AnImageThatCannotBeLoadedChangesNothing) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP);
    GwImage* const image = imageFor(hwnd);
    GwResource const executable;
    image->setImage(8100, executable, GwImage::eBitmap, false);
    HANDLE const shown = shownImage(hwnd, IMAGE_BITMAP);
    ASSERT_NE(shown, nullptr);
    image->setImage(9999, executable, GwImage::eBitmap, false);
    image->setImage(String("C:\\gibt\\es\\nicht.bmp"), GwImage::eBitmap, false);
    EXPECT_EQ(shownImage(hwnd, IMAGE_BITMAP), shown);
    EXPECT_EQ(GetObjectType(shown), static_cast<DWORD>(OBJ_BITMAP));
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, LoadingASecondImageDeletesTheFirst) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP);
    GwImage* const image = imageFor(hwnd);
    GwResource const executable;
    image->setImage(8100, executable, GwImage::eBitmap, false);
    HANDLE const first = shownImage(hwnd, IMAGE_BITMAP);
    ASSERT_EQ(GetObjectType(first), static_cast<DWORD>(OBJ_BITMAP));
    image->setImage(8101, executable, GwImage::eBitmap, false);
    HANDLE const second = shownImage(hwnd, IMAGE_BITMAP);
    EXPECT_NE(second, first);
    EXPECT_EQ(GetObjectType(first), 0u) << "the first bitmap is deleted";
    BITMAP info{};
    GetObjectA(second, sizeof info, &info);
    EXPECT_EQ(info.bmWidth, 200);
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, TheLastLoadedImageIsFreedWithTheWindow) {
    struct Case {
        DWORD style;
        GwImage::eImageType type;
        UINT imageType;
        unsigned long long id;
    } const cases[] = {{SS_BITMAP, GwImage::eBitmap, IMAGE_BITMAP, 8100},
                       {SS_ICON, GwImage::eIcon, IMAGE_ICON, 8102},
                       {SS_ENHMETAFILE, GwImage::eEnhMetaFile, IMAGE_ENHMETAFILE, 8103}};
    for (Case const& one : cases) {
        HWND const hwnd = imageStatic(parentHwnd(), one.style);
        imageFor(hwnd)->setImage(one.id, GwResource(), one.type, false);
        HANDLE const shown = shownImage(hwnd, one.imageType);
        ASSERT_NE(shown, nullptr) << one.id;
        DestroyWindow(hwnd);
        if (one.type == GwImage::eIcon) {
            ICONINFO info{};
            EXPECT_FALSE(GetIconInfo(static_cast<HICON>(shown), &info)) << "the icon is freed";
        } else {
            EXPECT_EQ(GetObjectType(shown), 0u) << one.id << " is freed with the window";
        }
    }
}

TEST_F(ControlTest, AnImageThatReplacedTheLoadedOneStaysWithWhoeverSetIt) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP);
    imageFor(hwnd)->setImage(8100, GwResource(), GwImage::eBitmap, false);
    HBITMAP const own = CreateBitmap(4, 4, 1, 32, nullptr);
    auto const loaded = reinterpret_cast<HANDLE>(
        SendMessageA(hwnd, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(own)));
    ASSERT_NE(loaded, nullptr);
    DestroyWindow(hwnd);
    EXPECT_EQ(GetObjectType(own), static_cast<DWORD>(OBJ_BITMAP)) << "not the control's to free";
    DeleteObject(own);
    DeleteObject(loaded);
}

TEST_F(ControlTest, ABitmapFromAFileIsShown) {
    std::string const path = scratchFile("vmgui-small.bmp");
    {
        GwResource const executable;
        HBITMAP const source = static_cast<HBITMAP>(
            LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(8100), IMAGE_BITMAP, 0, 0, 0));
        ASSERT_NE(source, nullptr);
        // Written as a file: header, info header and the bits of the 24-bit bitmap.
        BITMAP info{};
        GetObjectA(source, sizeof info, &info);
        BITMAPINFOHEADER header{};
        header.biSize = sizeof header;
        header.biWidth = info.bmWidth;
        header.biHeight = info.bmHeight;
        header.biPlanes = 1;
        header.biBitCount = 24;
        int const row = (info.bmWidth * 3 + 3) & ~3;
        std::string bits(static_cast<std::size_t>(row * info.bmHeight), '\0');
        HDC const screen = GetDC(nullptr);
        GetDIBits(screen, source, 0, static_cast<UINT>(info.bmHeight), bits.data(),
                  reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS);
        ReleaseDC(nullptr, screen);
        DeleteObject(source);
        BITMAPFILEHEADER file{};
        file.bfType = 0x4D42;
        file.bfOffBits = sizeof file + sizeof header;
        file.bfSize = file.bfOffBits + static_cast<DWORD>(bits.size());
        HANDLE const out = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        WriteFile(out, &file, sizeof file, &written, nullptr);
        WriteFile(out, &header, sizeof header, &written, nullptr);
        WriteFile(out, bits.data(), static_cast<DWORD>(bits.size()), &written, nullptr);
        CloseHandle(out);
    }
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP);
    GwImage* const image = imageFor(hwnd);
    image->setImage(String(path.c_str()), GwImage::eBitmap, true);
    HANDLE const shown = shownImage(hwnd, IMAGE_BITMAP);
    ASSERT_NE(shown, nullptr);
    BITMAP info{};
    GetObjectA(shown, sizeof info, &info);
    EXPECT_EQ(info.bmWidth, 50);
    EXPECT_EQ(info.bmHeight, 50);
    DestroyWindow(hwnd);
    DeleteFileA(path.c_str());
}

TEST_F(ControlTest, AnIconFromTheResourcesIsShownAndTheOneBeforeFreed) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_ICON);
    GwImage* const image = imageFor(hwnd);
    GwResource const executable;
    image->setImage(8102, executable, GwImage::eIcon, false);
    HANDLE const first = shownImage(hwnd, IMAGE_ICON);
    ASSERT_NE(first, nullptr);
    ICONINFO info{};
    EXPECT_TRUE(GetIconInfo(static_cast<HICON>(first), &info));
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    image->setImage(8102, executable, GwImage::eIcon, false);
    HANDLE const second = shownImage(hwnd, IMAGE_ICON);
    EXPECT_NE(second, first);
    EXPECT_FALSE(GetIconInfo(static_cast<HICON>(first), &info)) << "the first icon is freed";
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, AnEnhancedMetafileFromAFileIsShown) {
    std::string const path = scratchFile("vmgui-image.emf");
    HDC const recorder = CreateEnhMetaFileA(nullptr, path.c_str(), nullptr, nullptr);
    ASSERT_NE(recorder, nullptr);
    RECT const square{0, 0, 40, 40};
    HBRUSH const red = CreateSolidBrush(kRed);
    FillRect(recorder, &square, red);
    DeleteObject(red);
    DeleteEnhMetaFile(CloseEnhMetaFile(recorder));

    HWND const hwnd = imageStatic(parentHwnd(), SS_ENHMETAFILE);
    GwImage* const image = imageFor(hwnd);
    image->setImage(String(path.c_str()), GwImage::eEnhMetaFile, false);
    HANDLE const first = shownImage(hwnd, IMAGE_ENHMETAFILE);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(GetObjectType(first), static_cast<DWORD>(OBJ_ENHMETAFILE));
    image->setImage(String(path.c_str()), GwImage::eEnhMetaFile, false);
    EXPECT_NE(shownImage(hwnd, IMAGE_ENHMETAFILE), first);
    EXPECT_EQ(GetObjectType(first), 0u) << "the first metafile is deleted";
    DestroyWindow(hwnd);
    DeleteFileA(path.c_str());
}

// ---- Painting

TEST_F(ControlTest, AnOversizedBitmapIsPaintedSqueezedIntoTheControl) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP | SS_REALSIZEIMAGE);
    GwImage* const image = imageFor(hwnd);
    image->setImage(8101, GwResource(), GwImage::eBitmap, false); // 200 x 100: red | blue
    // Wine sizes an SS_REALSIZEIMAGE static to its bitmap (Windows keeps the size): give it
    // back its 100 x 100.
    SetWindowPos(hwnd, nullptr, 10, 10, 100, 100, SWP_NOZORDER);
    RECT client{};
    GetClientRect(hwnd, &client);
    ASSERT_EQ(client.right, 100);
    ASSERT_EQ(client.bottom, 100);
    InvalidateRect(hwnd, nullptr, TRUE);
    UpdateWindow(hwnd);
    // Squeezed to half the width: red on the left half, blue on the right, the full height.
    EXPECT_EQ(pixelOf(hwnd, 2, 2), kRed);
    EXPECT_EQ(pixelOf(hwnd, 40, 50), kRed);
    EXPECT_EQ(pixelOf(hwnd, 60, 50), kBlue);
    EXPECT_EQ(pixelOf(hwnd, 97, 97), kBlue);
    EXPECT_EQ(pixelOf(hwnd, 97, 2), kBlue);
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, ASmallBitmapIsPaintedByThePlatformUnscaled) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_BITMAP | SS_REALSIZEIMAGE);
    GwImage* const image = imageFor(hwnd);
    image->setImage(8100, GwResource(), GwImage::eBitmap, false); // 50 x 50 green
    SetWindowPos(hwnd, nullptr, 10, 10, 100, 100, SWP_NOZORDER);
    InvalidateRect(hwnd, nullptr, TRUE);
    UpdateWindow(hwnd);
    COLORREF const green = RGB(0, 128, 0);
    EXPECT_EQ(pixelOf(hwnd, 2, 2), green);
    EXPECT_EQ(pixelOf(hwnd, 48, 48), green);
    COLORREF const outside = pixelOf(hwnd, 75, 75);
    DestroyWindow(hwnd);
    if (runningOnWine())
        GTEST_SKIP() << "Wine's static stretches a bitmap over the whole control although "
                        "SS_REALSIZEIMAGE asks for it unscaled and clipped";
    EXPECT_NE(outside, green) << "not stretched over the control";
}

TEST_F(ControlTest, ImageFactoryBindsOnlyToAHandle) {
    EXPECT_EQ(GwImage::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwStatic::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwText::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwGroupBox::newInstance(nullptr), nullptr);
    HWND const hwnd = imageStatic(parentHwnd(), SS_ICON);
    GwWindow* const object = GwWindow::window(hwnd, true);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->isA(), GwImage::isa());
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, AnEnhancedMetafileFromTheResourcesIsShown) {
    HWND const hwnd = imageStatic(parentHwnd(), SS_ENHMETAFILE);
    GwImage* const image = imageFor(hwnd);
    image->setImage(8103, GwResource(), GwImage::eEnhMetaFile, false);
    HANDLE const shown = shownImage(hwnd, IMAGE_ENHMETAFILE);
    ASSERT_NE(shown, nullptr);
    ENHMETAHEADER header{};
    ASSERT_NE(GetEnhMetaFileHeader(static_cast<HENHMETAFILE>(shown), sizeof header, &header), 0u);
    EXPECT_EQ(header.rclBounds.right, 40);
    EXPECT_EQ(header.nRecords, 3u);
    image->setImage(8104, GwResource(), GwImage::eEnhMetaFile, false); // no such resource
    EXPECT_EQ(shownImage(hwnd, IMAGE_ENHMETAFILE), shown);
    DestroyWindow(hwnd);
}
