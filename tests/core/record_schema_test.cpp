#include "core/record_schema.h"

#include "support/byte_record.h"
#include "support/record_layout.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Check;
using test::Kind;
using test::LayoutRow;

// The schema as the record's layout tells it: the settings in the order of their places, the custom
// papers' once, and behind the margins the one setting that has no place.
std::vector<LayoutRow> ExpectedRows() {
  std::vector<LayoutRow> rows;
  const auto add = [&rows](const LayoutRow& row, std::size_t base) {
    if (*row.setting != '\0') {
      rows.push_back(row);
      rows.back().offset = static_cast<std::uint16_t>(row.offset + base);
    }
  };
  for (const LayoutRow& row : test::kRecordLayout) {
    add(row, 0);
    if (std::string_view(row.setting) == "PageMarginsUpDown") {
      rows.push_back(
          {0, 0, "", "PageMarginsEnableUserMargin", Kind::kBytes, 0, Check::kNone, 0, 1, 0});
    }
    for (const LayoutRow& part : test::kWatermarkLayout) {
      if (row.kind == Kind::kWatermarkRecord) {
        add(part, row.offset);
      }
    }
    for (const LayoutRow& part : test::kCustomPaperLayout) {
      if (row.kind == Kind::kPaperArray) {
        add(part, 0);
      }
    }
  }
  return rows;
}

FieldKind KindOf(const LayoutRow& row) {
  switch (row.kind) {
    case Kind::kWord:
      return FieldKind::kWord;
    case Kind::kDword:
      return FieldKind::kDword;
    case Kind::kUnsigned:
      return FieldKind::kUnsignedDword;
    case Kind::kText:
      return FieldKind::kText;
    case Kind::kBytes:
    case Kind::kWatermarkRecord:
    case Kind::kPaperArray:
      break;
  }
  return FieldKind::kNone;
}

Repair RepairOf(const LayoutRow& row) {
  switch (row.check) {
    case Check::kRange:
      return Repair::kRange;
    case Check::kEmptied:
      return Repair::kEmptyUnlessTerminated;
    case Check::kForced:
      return Repair::kForceTerminator;
    case Check::kNone:
    case Check::kSignature:
      break;
  }
  return Repair::kNone;
}

class SchemaRowOfSetting : public testing::TestWithParam<std::size_t> {
 protected:
  const SchemaRow& row_ = kRecordSchema[GetParam()];
  const LayoutRow expected_ = ExpectedRows().at(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Rows, SchemaRowOfSetting, testing::Range<std::size_t>(0, 86),
                         [](const auto& row) {
                           std::string name = "Row" + std::to_string(row.param);
                           for (const char letter :
                                std::string_view(ExpectedRows().at(row.param).setting)) {
                             name += letter == '%' ? std::string() : std::string(1, letter);
                           }
                           return name;
                         });

TEST_P(SchemaRowOfSetting, HoldsKeyDefaultAndRangeInItsPlace) {
  EXPECT_STREQ(row_.key, expected_.setting);
  EXPECT_EQ(row_.defaultValue, expected_.otherwise);
  EXPECT_EQ(row_.minimum, expected_.minimum);
  EXPECT_EQ(row_.maximum, expected_.maximum);
}

TEST_P(SchemaRowOfSetting, NamesThePlaceInTheRecordAndItsCheck) {
  EXPECT_EQ(row_.field.kind, KindOf(expected_));
  EXPECT_EQ(row_.field.offset, expected_.offset);
  const bool wide = expected_.kind == Kind::kDword || expected_.kind == Kind::kUnsigned;
  EXPECT_EQ(row_.field.count, expected_.width / (wide ? 4 : 2));
  EXPECT_EQ(row_.repair, RepairOf(expected_));
}

TEST_P(SchemaRowOfSetting, IsFoundByItsKey) {
  EXPECT_EQ(FindSchemaRow(expected_.setting), &row_);
}

TEST(RecordSchema, Has86Rows) {
  EXPECT_EQ(kRecordSchema.size(), 86U);
  EXPECT_EQ(ExpectedRows().size(), 86U);
}

TEST(RecordSchema, UsesEachOfItsUnitWordsAndNoOther) {
  const std::set<std::string> expected = {"PaperSizeID",
                                          "Flag",
                                          "Radio",
                                          "Orient",
                                          "Nup",
                                          "Order",
                                          "Border",
                                          "Oreint",
                                          "Poster",
                                          "CropMarks",
                                          "Booklet",
                                          "Binding",
                                          "Subsets",
                                          "Sheets",
                                          "Gutter",
                                          "AutoFit",
                                          "Margins",
                                          "Type",
                                          "Source",
                                          "Degrees",
                                          "ImageShift",
                                          "pixel",
                                          "PrintPosition",
                                          "AdjustPrintPosition",
                                          "EnableUserMargins",
                                          "Index",
                                          "Mode",
                                          "Bightness",
                                          "Contrast",
                                          "Saturation",
                                          "AdjustBalance",
                                          "TargetColor",
                                          "Highlights",
                                          "Midtones",
                                          "Shadows",
                                          "Profile",
                                          "Temperature",
                                          "Gamma",
                                          "InputIndex",
                                          "Characters",
                                          "Size",
                                          "Bold",
                                          "Italic",
                                          "RGB",
                                          "Scale",
                                          "Position",
                                          "PaperTray",
                                          "flag"};
  ASSERT_EQ(expected.size(), 48U);
  std::set<std::string> used;
  for (const SchemaRow& row : kRecordSchema) {
    used.insert(row.unit);
  }
  EXPECT_EQ(used, expected);
}

TEST(RecordSchema, GivesTheTwoNamedSettingsTheirUnitWords) {
  EXPECT_STREQ(FindSchemaRow("PageScaleOutputSize")->unit, "PaperSizeID");
  EXPECT_STREQ(FindSchemaRow("PageMarginsEnableUserMargin")->unit, "EnableUserMargins");
}

TEST(RecordSchema, MeasuresPagesInPixels) {
  for (const char* key : {"PageMarginsSide1", "PageMarginsSide2", "PageMarginsLeftRight",
                          "PageMarginsUpDown", "PageCustom%dWidth", "PageCustom%dLength"}) {
    EXPECT_STREQ(FindSchemaRow(key)->unit, "pixel") << key;
  }
}

TEST(RecordSchema, KeepsItsDefaultTexts) {
  EXPECT_EQ(std::u16string_view(FindSchemaRow("PageWMName")->defaultText), u"NoWatermark");
  EXPECT_EQ(std::u16string_view(FindSchemaRow("PageWMTypeface")->defaultText), u"Times New Roman");
  EXPECT_EQ(std::u16string_view(FindSchemaRow("CustomPaperSizeName")->defaultText), u"Custom %d");
}

TEST(FindSchemaRow, IsNullForAKeyThatNoRowHolds) {
  constexpr const char* kMisses[] = {"",           "PageParaNU",  "PageParaNUPs",     "pageparanup",
                                     "MultipleUp", "PageWMText ", "PageCustom1Width", "PageWM",
                                     "WMOffsetX"};
  for (const char* key : kMisses) {
    EXPECT_EQ(FindSchemaRow(key), nullptr) << '"' << key << '"';
  }
}

TEST(FindSchemaRow, ComparesTheWholeKeyThatIsGiven) {
  constexpr std::string_view kText = "PageParaNUP and more";
  EXPECT_EQ(FindSchemaRow(kText), nullptr);
  EXPECT_EQ(FindSchemaRow(kText.substr(0, 11)), FindSchemaRow("PageParaNUP"));
  EXPECT_EQ(FindSchemaRow(std::string_view("PageParaNUP\0", 12)), nullptr);
}

TEST(EnforceSchema, LeavesTheSignatureToTheValidator) {
  auto record = std::make_unique<PrivateDevmode>();
  record->Signature = {'N', 'O', 'N', 'E'};
  EnforceSchema(*record);
  EXPECT_EQ(std::memcmp(&record->Signature, "NONE", 4), 0);
  EXPECT_EQ(record->ColorMode, 1);
}

TEST(WriteSchemaDefaults, LeavesPlacesWithoutARowAsTheyWere) {
  const test::ByteRecord before = test::RandomBytes(test::kPrivateBytes, 9);
  auto record = std::make_unique<PrivateDevmode>();
  test::SetBytes(*record, before);
  WriteSchemaDefaults(*record);
  const test::ByteRecord after = test::BytesOf(*record);
  for (const test::RecordPlace& place : test::PlacesWith(Check::kNone)) {
    if (*place.row.setting == '\0') {
      const auto first = static_cast<std::ptrdiff_t>(place.offset);
      const auto last = first + place.row.width;
      EXPECT_EQ(test::ByteRecord(after.begin() + first, after.begin() + last),
                test::ByteRecord(before.begin() + first, before.begin() + last))
          << place.name;
    }
  }
}

}  // namespace
}  // namespace ostrel
