// One stamp drawn twice by the driver's own logic: into an enhanced metafile of the system's real
// drawing, and onto a page in memory. Both are given the same measures of texts and the same
// answers, and have to be told the same, operation by operation, escapes in their places.
#include "core/factory_watermarks.h"
#include "core/process_state.h"
#include "core/text.h"
#include "job/page_stamp.h"
#include "job/render_driver_escapes.h"
#include "metafile_operations.h"
#include "platform/win32/win32_platform.h"
#include "print_system_fixture.h"
#include "support/fixed_metrics.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace ostrel::print_system {
namespace {

using headless::DrawingOperation;
using Lines = std::vector<std::string>;

constexpr Rect kPage = {0, 0, 4960, 7016};
constexpr char16_t kPicturePath[] = u"C:\\stamp.bmp";
constexpr Size kPicture = {60, 40};

Size Measured(const LogFont& font, std::u16string_view text) {
  const std::int32_t height = std::abs(font.lfHeight);
  return {static_cast<std::int32_t>(text.size()) * height / 2, height + height / 8};
}

// The page's number, and nothing else that a stamp asks for.
int AnswerPageNumber(std::int32_t code, std::span<const std::byte> /*input*/,
                     std::span<std::byte> output) {
  constexpr std::int32_t kNumber = 12;
  if (code == kEscapePageNumber && output.size() == sizeof(kNumber)) {
    std::memcpy(output.data(), &kNumber, sizeof(kNumber));
  }
  return 1;
}

// A bitmap file of 24 bits a pixel whose bytes all differ from their neighbours'.
std::string PictureFile() {
  constexpr std::uint16_t kMark = 0x4D42;  // "BM"
  constexpr std::uint32_t kRows = 14 + sizeof(BitmapInfoHeader);
  constexpr std::uint32_t kRowsBytes = kPicture.width * 3 * kPicture.height;
  BitmapInfoHeader header = {};
  header.biSize = sizeof(header);
  header.biWidth = kPicture.width;
  header.biHeight = kPicture.height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  std::string file;
  const auto append = [&file](const auto& value) {
    file.append(reinterpret_cast<const char*>(&value), sizeof(value));
  };
  append(kMark);
  append(kRows + kRowsBytes);
  append(std::uint32_t{0});
  append(kRows);
  append(header);
  for (std::uint32_t i = 0; i < kRowsBytes; ++i) {
    file += static_cast<char>(i * 7);
  }
  return file;
}

void PutPicture(Files& files) {
  const std::string file = PictureFile();
  const FileHandle handle = files.CreateFileW(kPicturePath, Files::Access::kCreateAlwaysForWriting);
  std::uint32_t written = 0;
  ASSERT_NE(handle, nullptr);
  EXPECT_TRUE(
      files.WriteFile(handle, file.data(), static_cast<std::uint32_t>(file.size()), &written));
  files.CloseHandle(handle);
}

struct Stamp {
  const char* name;
  void (*change)(WatermarkData& record);
  std::int32_t pageState = 0;
  bool isRightToLeft = false;
};

void SetText(WatermarkData& record, std::u16string_view text) {
  CopyText(record.PageWMText, text);
}

WatermarkData RecordOf(const Stamp& stamp) {
  WatermarkData record = kFactoryWatermarkRecords[kNewWatermark];
  record.PageWMTransparent = 0;
  CopyText(record.PageWMTypeface, u"No such face");
  SetText(record, u"Draft");
  stamp.change(record);
  return record;
}

// Draws the stamp by a platform's lists, with other drawing in the place of its own.
void Draw(const Stamp& stamp, const Platform& world, Graphics& graphics, DeviceContext page) {
  PutPicture(world.files);
  Platform lists = {world.print,    world.locale,   world.modules, world.files,
                    world.registry, world.security, world.shell,   world.windows,
                    graphics,       world.system,   world.memory,  world.debug};
  ProcessState process;
  process.platform = &lists;
  process.RightToLeftLanguage = stamp.isRightToLeft;
  const ScopedProcessState scope(process);
  DrawPrintStamp(page, kPage, RecordOf(stamp), stamp.pageState, 1.0, {kPage.right, kPage.bottom});
}

std::vector<DrawingOperation> DrawnByTheSystem(const Stamp& stamp) {
  Metafile metafile(kTestPrinter);
  test::FixedMetrics graphics(win32::SystemPlatform().graphics, Measured);
  graphics.onEscape = AnswerPageNumber;
  graphics.onRecord = [&](DeviceContext, const DrawingOperation& escape) {
    CommentEscape(metafile.native(), escape);
  };
  Draw(stamp, win32::SystemPlatform(), graphics, metafile.context());
  return metafile.Operations();
}

std::vector<DrawingOperation> DrawnInTheMemory(const Stamp& stamp) {
  return RecordedByMetafiles(DrawnInMemory(
      {.page = {kPage.right, kPage.bottom}}, [&](Platform& platform, DeviceContext page) {
        test::FixedMetrics graphics(platform.graphics, Measured);
        graphics.onEscape = AnswerPageNumber;
        graphics.onRecord = [&](DeviceContext, const DrawingOperation& escape) {
          platform.graphics.ExtEscape(page, static_cast<std::int32_t>(escape.numbers[0]),
                                      static_cast<std::int32_t>(escape.bytes.size()),
                                      escape.bytes.data(),
                                      static_cast<std::int32_t>(escape.numbers[1]), nullptr);
        };
        Draw(stamp, platform, graphics, page);
      }));
}

// clang-format off
constexpr Stamp kStamps[] = {
    {"Level",          [](WatermarkData&) {}},
    {"Oblique",        [](WatermarkData& r) { r.PageWMAngle = 45; r.PageWMItalic = 1; r.PageWMBold = 1; }},
    {"Falling",        [](WatermarkData& r) { r.PageWMAngle = -30; r.PageWMPosition = 7; }},
    {"Ring",           [](WatermarkData& r) { r.PageWMBorder = 1; r.PageWMPosition = 3; }},
    {"FallingRing",    [](WatermarkData& r) { r.PageWMBorder = 1; r.PageWMAngle = -60; r.PageWMItalic = 1; }},
    {"Box",            [](WatermarkData& r) { r.PageWMBorder = 2; r.PageWMAngle = 30; }},
    {"FallingBox",     [](WatermarkData& r) { r.PageWMBorder = 2; r.PageWMAngle = -75; r.PageWMPosition = 9; }},
    {"Transparent",    [](WatermarkData& r) { r.PageWMBorder = 2; r.PageWMTransparent = 1; }},
    {"OwnColor",       [](WatermarkData& r) { r.WMGrayLevel = -1; r.PageWMColor = 0x123456; }},
    {"Tiles",          [](WatermarkData& r) { r.PageWMRepeat = 1; r.PageWMAngle = 90; }},
    {"TilesInBoxes",   [](WatermarkData& r) { r.PageWMRepeat = 1; r.PageWMBorder = 2; r.PageWMTransparent = 1; }},
    {"TooLongMoved",   [](WatermarkData& r) { r.PageWMRepeat = 1; r.PageWMSize = 600; SetText(r, u"abcdefghijklmnopqrstuvwxyz"); }, 1},
    {"OwnPlace",       [](WatermarkData& r) { r.PageWMPosition = 10; r.WMOffsetX = 20; r.WMOffsetY = 90; }},
    {"PageNumber",     [](WatermarkData& r) { r.WMStampOn = 1; r.WMStampPage = 1; CopyText(r.WMStampFormat, u"page "); }},
    {"RightToLeft",    [](WatermarkData& r) { SetText(r, u"\u05E1\u05D5\u05D3"); }, 0, true},
    {"Picture",        [](WatermarkData& r) { r.PageWMFlag = 2; r.PageWMScale = 150; CopyText(r.PageWMFileName, kPicturePath); }},
    {"PictureThrough", [](WatermarkData& r) { r.PageWMFlag = 2; r.PageWMScale = 150; r.PageWMPosition = 9; r.PageWMTransparent = 1; CopyText(r.PageWMFileName, kPicturePath); }},
    {"PictureTiles",   [](WatermarkData& r) { r.PageWMFlag = 2; r.PageWMScale = 100; r.PageWMSize = 288; r.PageWMRepeat = 1; CopyText(r.PageWMFileName, kPicturePath); }},
    {"NoPicture",      [](WatermarkData& r) { r.PageWMFlag = 2; r.PageWMScale = 100; CopyText(r.PageWMFileName, u"C:\\none.bmp"); }},
};
// clang-format on

class StampOperations : public testing::TestWithParam<Stamp> {};

TEST_P(StampOperations, AreTheSameInMemoryAndInThePrintSystem) {
  const std::vector<DrawingOperation> system = DrawnByTheSystem(GetParam());
  const std::vector<DrawingOperation> memory = DrawnInTheMemory(GetParam());
  EXPECT_EQ(LinesOf(system), LinesOf(memory));
  // Mapping there and back at the least.
  EXPECT_GE(system.size(), 4U);
  ASSERT_EQ(system.size(), memory.size());
  for (std::size_t i = 0; i < system.size(); ++i) {
    EXPECT_EQ(system[i].bytes, memory[i].bytes) << "operation " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(EachKind, StampOperations, testing::ValuesIn(kStamps),
                         [](const testing::TestParamInfo<Stamp>& row) {
                           return std::string(row.param.name);
                         });

}  // namespace
}  // namespace ostrel::print_system
