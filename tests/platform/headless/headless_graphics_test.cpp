#include "platform/headless/headless_graphics.h"

#include "platform/headless/test_dialogs.h"

#include <gtest/gtest.h>

namespace ostrel::headless {
namespace {

class Graphic : public testing::Test {
 protected:
  Graphic() {
    platform_.modules.InstallResources(kTestLibraryPath, TestDialogs());
    module_ = platform_.modules.LoadLibraryW(kTestLibraryPath);
  }

  HeadlessPlatform platform_;
  HeadlessGraphics& graphics_ = platform_.graphics;
  ModuleHandle module_ = nullptr;
};

TEST_F(Graphic, BitmapIsLoadedMeasuredAndDeletedOnce) {
  const GdiObject bitmap = graphics_.LoadBitmapW(module_, 78);
  ASSERT_NE(bitmap, nullptr);
  Size size = {};
  EXPECT_TRUE(graphics_.GetBitmapSize(bitmap, &size));
  EXPECT_EQ(size.width, 7);
  EXPECT_EQ(size.height, 5);
  EXPECT_EQ(graphics_.liveBitmaps(), 1U);
  EXPECT_TRUE(graphics_.DeleteObject(bitmap));
  EXPECT_FALSE(graphics_.DeleteObject(bitmap));
  EXPECT_FALSE(graphics_.GetBitmapSize(bitmap, &size));
  EXPECT_EQ(graphics_.liveBitmaps(), 0U);
}

TEST_F(Graphic, MissingBitmapIsNotLoaded) {
  EXPECT_EQ(graphics_.LoadBitmapW(module_, 79), nullptr);
  EXPECT_EQ(platform_.debug.GetLastError(), 1814U);
  EXPECT_EQ(graphics_.LoadBitmapW(nullptr, 78), nullptr);
}

TEST_F(Graphic, ContextsAreGivenBackTheWayTheyCame) {
  const DeviceContext screen = graphics_.GetDC(nullptr);
  const DeviceContext memory = graphics_.CreateCompatibleDC(screen);
  EXPECT_EQ(graphics_.liveContexts(), 2U);
  EXPECT_EQ(graphics_.ReleaseDC(nullptr, memory), 0);
  EXPECT_FALSE(graphics_.DeleteDC(screen));
  EXPECT_EQ(graphics_.GetDC(reinterpret_cast<WindowHandle>(&platform_)), nullptr);
  EXPECT_EQ(graphics_.ReleaseDC(nullptr, screen), 1);
  EXPECT_EQ(graphics_.ReleaseDC(nullptr, screen), 0);
  EXPECT_TRUE(graphics_.DeleteDC(memory));
  EXPECT_FALSE(graphics_.DeleteDC(memory));
  EXPECT_EQ(graphics_.liveContexts(), 0U);
}

TEST_F(Graphic, DotsPerInchAreSettable) {
  graphics_.logPixelsY = 144;
  const DeviceContext screen = graphics_.GetDC(nullptr);
  EXPECT_EQ(graphics_.GetDeviceCaps(screen, kDeviceCapLogPixelsY), 144);
  EXPECT_EQ(graphics_.GetDeviceCaps(screen, 1), 0);
  EXPECT_EQ(graphics_.GetDeviceCaps(nullptr, kDeviceCapLogPixelsY), 0);
  graphics_.ReleaseDC(nullptr, screen);
}

TEST_F(Graphic, BitmapIsInOneMemoryContextAtATime) {
  const DeviceContext screen = graphics_.GetDC(nullptr);
  const DeviceContext first = graphics_.CreateCompatibleDC(screen);
  const DeviceContext second = graphics_.CreateCompatibleDC(nullptr);
  const GdiObject bitmap = graphics_.LoadBitmapW(module_, 78);
  EXPECT_EQ(graphics_.SelectObject(screen, bitmap), nullptr);
  const GdiObject before = graphics_.SelectObject(first, bitmap);
  ASSERT_NE(before, nullptr);
  EXPECT_EQ(graphics_.SelectObject(second, bitmap), nullptr);
  EXPECT_FALSE(graphics_.DeleteObject(bitmap));
  EXPECT_EQ(graphics_.SelectObject(first, before), bitmap);
  EXPECT_NE(graphics_.SelectObject(second, bitmap), nullptr);
  EXPECT_TRUE(graphics_.DeleteDC(second));
  EXPECT_TRUE(graphics_.DeleteObject(bitmap));
}

TEST_F(Graphic, CopyIsKeptWithWhatWasInForce) {
  MessageLog log;
  const WindowHandle mirrored = platform_.windows.CreateDialogWindow(
      module_, kMirroredDialog, nullptr, &MessageLog::Procedure, 0, false);
  const DeviceContext target = graphics_.GetDC(mirrored);
  EXPECT_EQ(graphics_.GetLayout(target), 1U);
  const DeviceContext memory = graphics_.CreateCompatibleDC(target);
  EXPECT_EQ(graphics_.GetLayout(memory), 1U);
  EXPECT_EQ(graphics_.SetLayout(target, 9), 1U);
  const GdiObject bitmap = graphics_.LoadBitmapW(module_, 78);
  graphics_.SelectObject(memory, bitmap);
  EXPECT_TRUE(graphics_.TransparentBlt(target, {10, 20, 14, 23}, memory, {3, 2}, 0x123456));
  ASSERT_EQ(graphics_.copies.size(), 1U);
  const HeadlessGraphics::Copy& copy = graphics_.copies[0];
  EXPECT_EQ(copy.window, mirrored);
  EXPECT_EQ(copy.bitmap, 78U);
  EXPECT_EQ(copy.place, (Rect{10, 20, 14, 23}));
  EXPECT_EQ(copy.from.x, 3);
  EXPECT_EQ(copy.from.y, 2);
  EXPECT_EQ(copy.transparentColor, 0x123456U);
  EXPECT_EQ(copy.layout, 9U);
}

TEST_F(Graphic, CopyBeyondTheBitmapOrOfNothingIsRefused) {
  const DeviceContext screen = graphics_.GetDC(nullptr);
  const DeviceContext memory = graphics_.CreateCompatibleDC(screen);
  graphics_.SelectObject(memory, graphics_.LoadBitmapW(module_, 78));
  EXPECT_TRUE(graphics_.TransparentBlt(screen, {0, 0, 7, 5}, memory, {0, 0}, 0));
  EXPECT_FALSE(graphics_.TransparentBlt(screen, {0, 0, 8, 5}, memory, {0, 0}, 0));
  EXPECT_FALSE(graphics_.TransparentBlt(screen, {0, 0, 7, 5}, memory, {0, 1}, 0));
  EXPECT_FALSE(graphics_.TransparentBlt(screen, {0, 0, 0, 5}, memory, {0, 0}, 0));
  EXPECT_FALSE(graphics_.TransparentBlt(nullptr, {0, 0, 1, 1}, memory, {0, 0}, 0));
  EXPECT_FALSE(graphics_.TransparentBlt(screen, {0, 0, 1, 1}, nullptr, {0, 0}, 0));
  EXPECT_EQ(graphics_.copies.size(), 1U);
}

TEST_F(Graphic, EveryOperationFailsByItsName) {
  const DeviceContext screen = graphics_.GetDC(nullptr);
  const DeviceContext memory = graphics_.CreateCompatibleDC(screen);
  const GdiObject bitmap = graphics_.LoadBitmapW(module_, 78);
  for (const char* operation :
       {"LoadBitmapW", "GetBitmapSize", "GetDC", "GetDeviceCaps", "CreateCompatibleDC",
        "SelectObject", "GetLayout", "SetLayout", "TransparentBlt"}) {
    platform_.faults.FailOperation(operation);
  }
  Size size = {-1, -1};
  EXPECT_EQ(graphics_.LoadBitmapW(module_, 78), nullptr);
  EXPECT_FALSE(graphics_.GetBitmapSize(bitmap, &size));
  EXPECT_EQ(size.width, -1);
  EXPECT_EQ(graphics_.GetDC(nullptr), nullptr);
  EXPECT_EQ(graphics_.GetDeviceCaps(screen, kDeviceCapLogPixelsY), 0);
  EXPECT_EQ(graphics_.CreateCompatibleDC(screen), nullptr);
  EXPECT_EQ(graphics_.SelectObject(memory, bitmap), nullptr);
  EXPECT_EQ(graphics_.GetLayout(screen), 0xFFFFFFFFU);
  EXPECT_EQ(graphics_.SetLayout(screen, 1), 0xFFFFFFFFU);
  EXPECT_FALSE(graphics_.TransparentBlt(screen, {0, 0, 1, 1}, memory, {0, 0}, 0));
  EXPECT_EQ(graphics_.liveBitmaps(), 1U);
  EXPECT_EQ(graphics_.liveContexts(), 2U);
}

}  // namespace
}  // namespace ostrel::headless
