#include "core/ui_context.h"

#include "support/call_recorder.h"
#include "support/caller_block.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ostrel {
namespace {

using test::BytesOf;
using test::CallerBlock;
using test::CallRecorder;
using test::DefaultRecord;

struct FreeContext {
  void operator()(UIContext* context) const { FreeUIContext(context); }
};
using ContextOwner = std::unique_ptr<UIContext, FreeContext>;

class UIContextCreation : public testing::Test {
 protected:
  ~UIContextCreation() override { world_.platform.print.ClosePrinter(printer_); }

  ContextOwner Create(const PublicDevmode* callerDevmode = nullptr) {
    return ContextOwner(CreateUIContext(printer_, callerDevmode));
  }

  void Store(const DriverDevmode& record) { world_.printer->devmode = BytesOf(record); }

  // What is left once the printer is closed, too.
  std::string Leftovers(std::size_t expectedLoads) {
    world_.platform.print.ClosePrinter(printer_);
    return world_.Leftovers(expectedLoads);
  }

  test::TestWorld world_;
  PrinterHandle printer_ = world_.OpenPrinter();
};

bool AreAllZero(const CustomPaperEntry (&entries)[kCustomPaperEntries]) {
  const auto* bytes = reinterpret_cast<const std::byte*>(entries);
  return std::all_of(bytes, bytes + sizeof(entries),
                     [](std::byte each) { return each == std::byte{0}; });
}

std::u16string FavoriteNameOf(const UIContext& context) {
  return context.privatePointer->FavoriteName;
}

// ---- The steps ----------------------------------------------------------------------------------

// A record whose paper is unknown, so that merging it asks for the locale's, and whose favourite
// has no name.
DriverDevmode RecordOfUnknownPaper() {
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmPaperSize = 8;
  return record;
}

// Which library names are put together is the language's matter; it is left out of the orders.
constexpr std::string_view kLanguageMatters[] = {"GetModuleFileNameW", "GetUserDefaultUILanguage"};

TEST_F(UIContextCreation, FirstContextTakesItsStepsInOrder) {
  Store(RecordOfUnknownPaper());
  const DriverDevmode caller = RecordOfUnknownPaper();
  CallRecorder recorder(world_);
  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);

  const test::Calls expected = test::InOrder({
      {
          "HeapAlloc context",
          "GetPrinterW level 2, size",
          "HeapAlloc block",
          "GetPrinterW level 2, block",
          "GetLocaleInfoW type 5",
      },
      test::UserRead("Suffix", test::kDriverName),
      test::UserWrite("Suffix", test::kDriverName),
      {
          "LoadLibraryW ostrelPCL6uienus.dll",
          "LoadStringW 202",
          "LoadStringW 146",
          "FreeLibrary",
          "HeapAlloc context",
      },
      test::UserRead("Suffix", test::kDriverName),
      {
          "LoadLibraryW ostrelPCL6uienus.dll",
          "LoadLibraryW ostrelPCL6uiResBmp.dll",
          "GetLocaleInfoW type 5",
          "GetLocaleInfoW type 5",
          "LoadStringW 202",
          "HeapFree",
      },
  });
  EXPECT_EQ(recorder.CallsExcept(kLanguageMatters), expected);
}

TEST_F(UIContextCreation, LaterContextTakesTheSameStepsWithoutAnotherCopyBlock) {
  const ContextOwner first = Create();
  CallRecorder recorder(world_);
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);

  const test::Calls expected = test::InOrder({
      {
          "HeapAlloc context",
          "GetPrinterW level 2, size",
          "HeapAlloc block",
          "GetPrinterW level 2, block",
          "GetLocaleInfoW type 5",
      },
      test::UserRead("Suffix", test::kDriverName),
      {
          "LoadLibraryW ostrelPCL6uienus.dll",
          "LoadStringW 202",
          "LoadStringW 146",
          "FreeLibrary",
      },
      test::UserRead("Suffix", test::kDriverName),
      {
          "LoadLibraryW ostrelPCL6uienus.dll",
          "LoadLibraryW ostrelPCL6uiResBmp.dll",
          "HeapFree",
      },
  });
  EXPECT_EQ(recorder.CallsExcept(kLanguageMatters), expected);
}

TEST_F(UIContextCreation, NewContextHoldsHandlesNameTableAndZeroElsewhere) {
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->printerHandle, printer_);
  EXPECT_EQ(context->privatePointer, &context->devmode.privateDevmode);
  EXPECT_EQ(context->publicPointer, &context->devmode.publicDevmode);
  EXPECT_EQ(std::u16string(context->driverName), test::kDriverName);
  EXPECT_STREQ(context->uiParams[0].Key, "OutputSize");
  EXPECT_STREQ(context->uiParams[77].Key, "sLaserTestAPResolut");

  EXPECT_EQ(context->sheetHandle, nullptr);
  EXPECT_EQ(context->documentHeader, nullptr);
  EXPECT_EQ(context->sheetCallback, nullptr);
  EXPECT_EQ(context->activePage, 0U);
  EXPECT_EQ(context->reserved, 0U);
  EXPECT_EQ(context->applied, 0U);
  EXPECT_EQ(context->deviceSheet, 0U);
  EXPECT_EQ(context->noPermission, 0U);
  EXPECT_EQ(context->silentPrint, 0U);
}

TEST_F(UIContextCreation, WithoutAnyRecordTheDriversDefaultsAreInForce) {
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  DriverDevmode defaults;
  ASSERT_TRUE(InitDriverDevmode(&defaults, test::kDriverName, test::kDriverName));
  for (CustomPaperEntry& entry : defaults.privateDevmode.CustomPaperSize) {
    entry = {};
  }
  EXPECT_EQ(BytesOf(context->devmode), BytesOf(defaults));
  EXPECT_EQ(std::u16string(context->publicPointer->dmDeviceName), test::kDriverName);
}

TEST_F(UIContextCreation, PublicPartIsDirectlyBeforeThePrivatePart) {
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(reinterpret_cast<std::byte*>(context->privatePointer) -
                reinterpret_cast<std::byte*>(context->publicPointer),
            220);
}

// ---- Failures -----------------------------------------------------------------------------------

struct FailureCase {
  const char* name;
  void (*arrange)(test::TestWorld& world);
  const char16_t* debugLine;  // null for none
  std::size_t leftLoads;      // libraries that stay loaded
};

class UIContextFailure : public testing::TestWithParam<FailureCase> {};

INSTANTIATE_TEST_SUITE_P(
    Conditions, UIContextFailure,
    testing::Values(
        FailureCase{"NoMemoryForTheContext",
                    [](auto& world) { world.platform.faults.FailOperation("HeapAlloc", 1); },
                    nullptr, 0},
        FailureCase{"PrinterTellsNoSize",
                    [](auto& world) { world.platform.faults.FailOperation("GetPrinterW", 1); },
                    u"Registry_GetHL fail, level:2, error code is 6\n", 0},
        FailureCase{"PrinterTellsASizeAndNoMore",
                    [](auto& world) { world.platform.faults.FailOperation("GetPrinterW", 2); },
                    u"Registry_GetHL fail, level:2, error code is 6\n", 0},
        FailureCase{"PrinterTellsNothingOfItself",
                    [](auto& world) { world.printer->describes = false; },
                    u"Registry_GetHL fail, level:2, error code is 6\n", 0},
        FailureCase{"NoMemoryForThePrintersDescription",
                    [](auto& world) { world.platform.faults.FailOperation("HeapAlloc", 2); },
                    u"Registry_GetHL fail, level:2, error code is 8\n", 0},
        FailureCase{"PrintersDescriptionGrowsEachTime",
                    [](auto& world) { world.platform.print.GrowDescriptionBy(8); },
                    u"Registry_GetHL fail, level:2, error code is 122\n", 0},
        FailureCase{"DriverNameOf260Units",
                    [](auto& world) { world.printer->driverName.assign(260, u'n'); }, nullptr, 0},
        FailureCase{"DriverNameOf1000Units",
                    [](auto& world) { world.printer->driverName.assign(1000, u'n'); }, nullptr, 0},
        FailureCase{"BitmapLibraryMissing",
                    [](auto& world) { world.platform.modules.Remove(test::kBitmapLibraryPath); },
                    nullptr, 1}),
    test::CaseName());

TEST_P(UIContextFailure, GivesNoContextAndLeavesNothingBehind) {
  test::TestWorld world;
  const PrinterHandle printer = world.OpenPrinter();
  GetParam().arrange(world);
  EXPECT_EQ(CreateUIContext(printer, nullptr), nullptr);
  std::vector<std::u16string> expectedLines;
  if (GetParam().debugLine != nullptr) {
    expectedLines.emplace_back(GetParam().debugLine);
  }
  EXPECT_EQ(world.platform.debug.lines, expectedLines);
  world.platform.print.ClosePrinter(printer);
  EXPECT_EQ(world.Leftovers(GetParam().leftLoads), "");
}

TEST(UIContextNullPrinter, GivesNoContextAndTheDebugLine) {
  test::TestWorld world;
  EXPECT_EQ(CreateUIContext(nullptr, nullptr), nullptr);
  EXPECT_EQ(world.platform.debug.lines,
            std::vector<std::u16string>{u"Registry_GetHL fail, level:2, error code is 6\n"});
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_F(UIContextCreation, DriverNameOf259UnitsFits) {
  const std::u16string name(259, u'n');
  world_.printer->driverName = name;
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(std::u16string(context->driverName), name);
  EXPECT_EQ(std::u16string(context->publicPointer->dmDeviceName), std::u16string(31, u'n'));
}

TEST_F(UIContextCreation, DescriptionThatGrewBetweenTheCallsIsAskedForAgain) {
  // The port's text ends at the edge of its place in the block, so one unit more makes the block
  // larger, and the next few don't.
  world_.printer->port = u"LPT1234";
  world_.platform.print.GrowDescriptionBy(1);
  world_.platform.faults.StartTrace();
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(std::u16string(context->driverName), test::kDriverName);
  EXPECT_EQ(std::ranges::count(world_.platform.faults.trace(), "GetPrinterW"), 3);
  EXPECT_TRUE(world_.platform.debug.lines.empty());
}

TEST_F(UIContextCreation, MissingLanguageLibraryIsNoFailureAndNamesTheFavouriteByItsId) {
  world_.platform.modules.Remove(test::kEnglishLibraryPath);
  {
    const ContextOwner context = Create();
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(context->languageModule, nullptr);
    EXPECT_EQ(world_.process.CurrentLanguageModule, nullptr);
    EXPECT_NE(context->bitmapModule, nullptr);
    EXPECT_EQ(FavoriteNameOf(*context), u"id:202 missing!");
    EXPECT_EQ(std::u16string(world_.process.DefaultContextCopy->privatePointer->FavoriteName), u"");
    EXPECT_EQ(std::u16string(world_.process.DefaultWatermarks[kNoWatermark].PageWMName),
              u"[No Watermark]");
  }
  EXPECT_EQ(Leftovers(1), "");
}

// ---- Libraries ----------------------------------------------------------------------------------

TEST_F(UIContextCreation, LibrariesAreLoadedOnceAndStayLoadedAfterTheContextIsFreed) {
  ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_NE(context->languageModule, nullptr);
  EXPECT_NE(context->bitmapModule, nullptr);
  EXPECT_NE(context->languageModule, context->bitmapModule);
  EXPECT_EQ(world_.process.CurrentLanguageModule, context->languageModule);
  EXPECT_EQ(world_.platform.modules.loadsOf(test::kEnglishLibraryPath), 1U);
  EXPECT_EQ(world_.platform.modules.loadsOf(test::kBitmapLibraryPath), 1U);
  char16_t text[16] = {};
  EXPECT_EQ(world_.platform.modules.LoadStringW(context->languageModule, 202, text, 16), 7);

  context.reset();
  EXPECT_EQ(world_.platform.modules.loadsOf(test::kEnglishLibraryPath), 1U);
  EXPECT_EQ(world_.platform.modules.loadsOf(test::kBitmapLibraryPath), 1U);
  EXPECT_NE(world_.process.CurrentLanguageModule, nullptr);
  EXPECT_EQ(Leftovers(2), "");
}

TEST_F(UIContextCreation, EachContextLoadsItsOwnAndTheLastOneIsTheCurrentLanguage) {
  world_.platform.modules.Install(
      u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uide.dll", {{202, u"Standard"}});
  const ContextOwner english = Create();
  world_.UserValues(test::kDriverName)[u"suffix"] = headless::StoredValue::Text(u"de");
  const ContextOwner german = Create();
  ASSERT_NE(english, nullptr);
  ASSERT_NE(german, nullptr);
  EXPECT_NE(english->languageModule, german->languageModule);
  EXPECT_EQ(world_.process.CurrentLanguageModule, german->languageModule);
  EXPECT_EQ(FavoriteNameOf(*german), u"Standard");
}

TEST(UIContextFree, AcceptsNull) {
  test::TestWorld world;
  FreeUIContext(nullptr);
  EXPECT_EQ(world.Leftovers(), "");
}

// The block of the copy, counted over the allocations of a user's first context: the context, the
// printer's description, and the user's identity for reading and for writing the suffix come first.
constexpr std::size_t kAllocationOfTheCopy = 5;

// ---- The copy with the defaults -----------------------------------------------------------------

TEST_F(UIContextCreation, DefaultContextCopyIsOneBlockRefreshedByEachContext) {
  EXPECT_EQ(world_.process.DefaultContextCopy, nullptr);
  const ContextOwner first = Create();
  UIContext* const copy = world_.process.DefaultContextCopy;
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, first.get());
  EXPECT_EQ(copy->devmode.publicDevmode.dmPaperSize, 9);

  world_.platform.locale.country = u"1";
  world_.printer->driverName = u"Ostrel Elm 1 Series";
  const ContextOwner second = Create();
  EXPECT_EQ(world_.process.DefaultContextCopy, copy);
  EXPECT_EQ(copy->devmode.publicDevmode.dmPaperSize, 1);
  EXPECT_EQ(std::u16string(copy->driverName), u"Ostrel Elm 1 Series");
}

TEST_F(UIContextCreation, DefaultContextCopyPointsIntoItself) {
  const ContextOwner context = Create();
  const UIContext* copy = world_.process.DefaultContextCopy;
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->privatePointer, &copy->devmode.privateDevmode);
  EXPECT_EQ(copy->publicPointer, &copy->devmode.publicDevmode);
}

TEST_F(UIContextCreation, DefaultContextCopyHoldsTheDefaultsBeforeAnyMerge) {
  DriverDevmode stored = DefaultRecord();
  stored.publicDevmode.dmCopies = 7;
  stored.privateDevmode.ScaleRadio = 50;
  Store(stored);
  DriverDevmode caller = DefaultRecord();
  caller.publicDevmode.dmOrientation = 2;
  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 1);
  EXPECT_EQ(context->publicPointer->dmOrientation, 2);

  const UIContext* copy = world_.process.DefaultContextCopy;
  ASSERT_NE(copy, nullptr);
  DriverDevmode defaults;
  ASSERT_TRUE(InitDriverDevmode(&defaults, test::kDriverName, test::kDriverName));
  EXPECT_EQ(BytesOf(copy->devmode), BytesOf(defaults));
}

TEST_F(UIContextCreation, DefaultContextCopyKeepsTheDefaultCustomPapers) {
  const ContextOwner context = Create();
  const UIContext* copy = world_.process.DefaultContextCopy;
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(AreAllZero(context->privatePointer->CustomPaperSize));
  std::size_t number = 0;
  for (const CustomPaperEntry& entry : copy->privatePointer->CustomPaperSize) {
    EXPECT_EQ(entry.Width, 4960);
    EXPECT_EQ(entry.Length, 7015);
    EXPECT_EQ(test::Ascii(entry.Name), "Custom " + std::to_string(++number));
  }
}

TEST_F(UIContextCreation, DefaultContextCopyIsTakenBeforeTheLibrariesAreLoaded) {
  const ContextOwner context = Create();
  const UIContext* copy = world_.process.DefaultContextCopy;
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->printerHandle, printer_);
  EXPECT_EQ(copy->languageModule, nullptr);
  EXPECT_EQ(copy->bitmapModule, nullptr);
  EXPECT_STREQ(copy->uiParams[0].Key, "OutputSize");
}

TEST_F(UIContextCreation, WithoutMemoryForTheCopyTheContextIsMadeAllTheSame) {
  DriverDevmode stored = DefaultRecord();
  stored.publicDevmode.dmCopies = 7;
  Store(stored);
  world_.platform.faults.FailOperation("HeapAlloc", kAllocationOfTheCopy);
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(world_.process.DefaultContextCopy, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 7);
  EXPECT_NE(context->languageModule, nullptr);
  EXPECT_NE(context->bitmapModule, nullptr);
  EXPECT_TRUE(AreAllZero(context->privatePointer->CustomPaperSize));

  const ContextOwner next = Create();
  EXPECT_NE(world_.process.DefaultContextCopy, nullptr);
}

// ---- The records --------------------------------------------------------------------------------

TEST_F(UIContextCreation, CallersRecordWinsOverTheSpoolersWhichWinsOverTheDefaults) {
  DriverDevmode stored = DefaultRecord();
  stored.publicDevmode.dmCopies = 5;
  stored.publicDevmode.dmOrientation = 2;
  stored.privateDevmode.ScaleRadio = 50;
  stored.privateDevmode.MultipleUp = 4;
  Store(stored);
  DriverDevmode caller = DefaultRecord();
  caller.publicDevmode.dmFields = kDmCopies;
  caller.publicDevmode.dmCopies = 9;
  caller.privateDevmode.ScaleRadio = 70;

  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 9);
  EXPECT_EQ(context->publicPointer->dmOrientation, 2);
  EXPECT_EQ(context->privatePointer->ScaleRadio, 70);
  EXPECT_EQ(context->privatePointer->MultipleUp, 1);  // the private part is taken as a whole
}

TEST_F(UIContextCreation, SpoolersRecordAloneIsMerged) {
  DriverDevmode stored = DefaultRecord();
  stored.publicDevmode.dmDuplex = 3;
  stored.privateDevmode.ScaleRadio = 401;
  Store(stored);
  const ContextOwner context = Create();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmDuplex, 3);
  EXPECT_EQ(context->privatePointer->ScaleRadio, 100);  // repaired on the way
}

TEST_F(UIContextCreation, ForeignRecordsArePassedOver) {
  DriverDevmode stored = DefaultRecord();
  stored.publicDevmode.dmFields = 0;
  stored.publicDevmode.dmCopies = 5;
  Store(stored);
  DriverDevmode foreign = DefaultRecord();
  foreign.publicDevmode.dmCopies = 9;
  CallerBlock caller = CallerBlock::Sized(foreign, 216, 0);
  const ContextOwner context = Create(caller.get());
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 1);
}

TEST_F(UIContextCreation, ForeignCallersRecordLeavesTheSpoolersInForce) {
  DriverDevmode stored = DefaultRecord();
  stored.publicDevmode.dmCopies = 5;
  Store(stored);
  DriverDevmode foreign = DefaultRecord();
  foreign.publicDevmode.dmCopies = 9;
  CallerBlock caller = CallerBlock::Sized(foreign, 192, 112);
  const ContextOwner context = Create(caller.get());
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 5);
}

TEST_F(UIContextCreation, DriverNameStaysWhateverTheRecordsAreCalled) {
  DriverDevmode caller = DefaultRecord();
  caller.publicDevmode.dmDeviceName[0] = u'X';
  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(std::u16string(context->publicPointer->dmDeviceName), test::kDriverName);
}

struct CustomPaperCase {
  const char* name;
  bool stored;
  bool caller;
  bool withoutCopy;
};

class CustomPapersOfMergedRecords : public testing::TestWithParam<CustomPaperCase> {};

INSTANTIATE_TEST_SUITE_P(Records, CustomPapersOfMergedRecords,
                         testing::Values(CustomPaperCase{"Stored", true, false, false},
                                         CustomPaperCase{"Callers", false, true, false},
                                         CustomPaperCase{"Both", true, true, false},
                                         CustomPaperCase{"BothWithoutCopy", true, true, true},
                                         CustomPaperCase{"NoneWithoutCopy", false, false, true}),
                         test::CaseName());

TEST_P(CustomPapersOfMergedRecords, NeverSurviveTheCreation) {
  test::TestWorld world;
  const PrinterHandle printer = world.OpenPrinter();
  DriverDevmode record = DefaultRecord();
  record.privateDevmode.ScaleRadio = 50;
  ASSERT_FALSE(AreAllZero(record.privateDevmode.CustomPaperSize));
  if (GetParam().stored) {
    world.printer->devmode = BytesOf(record);
  }
  if (GetParam().withoutCopy) {
    world.platform.faults.FailOperation("HeapAlloc", kAllocationOfTheCopy);
  }
  const ContextOwner context(
      CreateUIContext(printer, GetParam().caller ? &record.publicDevmode : nullptr));
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(world.process.DefaultContextCopy == nullptr, GetParam().withoutCopy);
  EXPECT_TRUE(AreAllZero(context->privatePointer->CustomPaperSize));
  EXPECT_EQ(context->privatePointer->UseSoftFont, 1U);  // what follows the array stands
  EXPECT_EQ(context->privatePointer->ScaleRadio, GetParam().stored || GetParam().caller ? 50 : 100);
}

TEST_F(UIContextCreation, EmptyFavouriteNameIsFilled) {
  const DriverDevmode caller = DefaultRecord();
  ASSERT_EQ(caller.privateDevmode.FavoriteName[0], u'\0');
  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(FavoriteNameOf(*context), u"Default");
}

TEST_F(UIContextCreation, FavouriteNameOfARecordIsKept) {
  DriverDevmode caller = DefaultRecord();
  caller.privateDevmode.FavoriteName[0] = u'M';
  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(FavoriteNameOf(*context), u"M");
}

TEST_F(UIContextCreation, FavouriteNameIsCutTo255Characters) {
  world_.platform.modules.Install(test::kEnglishLibraryPath, {{202, std::u16string(300, u'f')}});
  const DriverDevmode caller = DefaultRecord();
  const ContextOwner context = Create(&caller.publicDevmode);
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(FavoriteNameOf(*context), std::u16string(255, u'f'));
  EXPECT_EQ(context->privatePointer->FavoriteIndex, 26);  // what follows the name stands
}

}  // namespace
}  // namespace ostrel
