#include "job_settings.h"

#include "core/text.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace ostrel {
namespace {

constexpr char16_t kFolder[] = u"C:\\jobs\\";

DriverDevmode RecordOf(std::string_view text) {
  DriverDevmode record = {};
  ApplyJobSettings(record, text, kFolder);
  return record;
}

TEST(JobSettings, NumbersAndTextsAreWritten) {
  const DriverDevmode record = RecordOf(
      "dmOrientation = 2\n"
      "PageWMAngle=-45\r\n"
      "  PageWMText = \"Top secret\"  \n");
  EXPECT_EQ(record.publicDevmode.dmOrientation, 2);
  EXPECT_EQ(record.privateDevmode.WatermarkData.PageWMAngle, -45);
  EXPECT_EQ(FieldText(record.privateDevmode.WatermarkData.PageWMText), u"Top secret");
}

TEST(JobSettings, CommentsAndEmptyLinesCountAsNothing) {
  const DriverDevmode record = RecordOf("# a comment = 5\n\n   \n  # more\nPageWMBold = 1");
  EXPECT_EQ(record.privateDevmode.WatermarkData.PageWMBold, 1);
}

TEST(JobSettings, TextsAreUtf8) {
  const DriverDevmode record =
      RecordOf("PageWMText = \"\xD7\xA1\xE4\xB8\xAD\xF0\x9F\x98\x80\xFF\"");
  EXPECT_EQ(FieldText(record.privateDevmode.WatermarkData.PageWMText),
            u"\u05E1\u4E2D\xD83D\xDE00\uFFFD");
}

TEST(JobSettings, PictureWithoutFullPathLiesBesideTheFile) {
  const auto path = [](std::string_view text) {
    return std::u16string(FieldText(RecordOf(text).privateDevmode.WatermarkData.PageWMFileName));
  };
  EXPECT_EQ(path("PageWMFileName = \"a.bmp\""), u"C:\\jobs\\a.bmp");
  EXPECT_EQ(path("PageWMFileName = \"D:\\a.bmp\""), u"D:\\a.bmp");
  EXPECT_EQ(path("PageWMFileName = \"\\\\host\\a.bmp\""), u"\\\\host\\a.bmp");
  EXPECT_EQ(path("PageWMFileName = \"\""), u"");
}

class BadLine : public testing::TestWithParam<const char*> {};

TEST_P(BadLine, IsToldAndNotPassedOver) {
  EXPECT_THROW(RecordOf(GetParam()), std::runtime_error);
}

INSTANTIATE_TEST_SUITE_P(JobSettings, BadLine,
                         testing::Values("PageWMBold", "NoSuchSetting = 1", "PageWMBold = \"1\"",
                                         "PageWMText = plain", "PageWMBold = ", "PageWMBold = 1x",
                                         "PageWMText = \"", "= 1"));

}  // namespace
}  // namespace ostrel
