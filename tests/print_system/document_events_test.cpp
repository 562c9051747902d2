// The document events and the adjustments for XPS documents, as a caller of the installed library
// sees them.
#include "copied_library.h"
#include "core/factory_watermarks.h"
#include "neighbour_values.h"
#include "print_system_fixture.h"
#include "render_driver.h"
#include "settings_folder.h"
#include "sheet_driver.h"
#include "stored_values.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace ostrel::print_system {
namespace {

// The process's current directory; the start of a monitor leaves it elsewhere.
class KeptDirectory {
 public:
  ~KeptDirectory() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

class DocumentEvents : public testing::Test {
 protected:
  ~DocumentEvents() override { DeleteDC(context_); }

  INT Raise(INT event) {
    return driver_->DrvDocumentEvent(printer_.get(), context_, event, 0, nullptr, 0, nullptr);
  }
  // A universal printer whose settings were made for another model.
  void ChangeModel() {
    printersValues_.Set(L"InstallMode", DwordValue(1));
    printersValues_.Set(L"ConfigPrinterName", TextValue(L"Cedar 1 Series"));
    printersValues_.Set(L"PrinterName", TextValue(L"Hazel 2 Series"));
    printersValues_.Set(L"ConfigPrintInfo", TextValue(L"Info. "));
    printersValues_.Set(L"RegTips2", TextValue(L"Now it is "));
    printersValues_.Set(L"RegTips", TextValue(L". Look again."));
  }

  KeptDirectory directory_;
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
  RenderDriver render_;
  NeighbourValues companion_{L"Companion"};
  UserValues printersValues_{kTestPrinter};
  Printer printer_{kTestPrinter};
  HDC context_ = CreateDCW(L"WINSPOOL", kTestPrinter, nullptr, nullptr);
};

TEST_F(DocumentEvents, AreHandledByTheirLowWord) {
  for (int event = 0; event <= 20; ++event) {
    const bool isHandled = event == 1 || (event >= 5 && event <= 7) || event == 13;
    for (const int high : {0, 0x10000, 0x7FFF0000}) {
      EXPECT_EQ(driver_->DrvDocumentEvent(nullptr, nullptr, event | high, 0, nullptr, 0, nullptr),
                isHandled ? 1 : 0)
          << event;
    }
  }
}

TEST_F(DocumentEvents, OfAPageGoToTheRenderDriver) {
  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTPAGE), 1);
  EXPECT_EQ(render_.Codes(), std::vector<int>{20486});
  EXPECT_EQ(Raise(DOCUMENTEVENT_ENDPAGE), 1);
  EXPECT_EQ(render_.Codes(), (std::vector<int>{20486, 20481, 20492, 20485}));
  EXPECT_EQ(render_.escapes[1].outputBytes, 1348);
  for (const RenderDriver::Escape& escape : render_.escapes) {
    EXPECT_EQ(escape.context, context_);
    EXPECT_TRUE(escape.input.empty()) << escape.code;
  }
}

TEST_F(DocumentEvents, AtTheStartTellTheCompanionAndTheComputersName) {
  int in = 0;
  int out = 0;
  constexpr INT kEvent = 0x00420005;
  EXPECT_EQ(driver_->DrvDocumentEvent(printer_.get(), context_, kEvent, 17, &in, 4, &out), 1);
  const auto number = [](const void* pointer) {
    return std::to_wstring(reinterpret_cast<std::uintptr_t>(pointer));
  };
  EXPECT_EQ(companion_.Number(L"EventCalls"), 1U);
  EXPECT_EQ(companion_.Text(L"EventPrinter"), number(printer_.get()));
  EXPECT_EQ(companion_.Text(L"EventContext"), number(context_));
  EXPECT_EQ(companion_.Number(L"Event"), DWORD{kEvent});
  EXPECT_EQ(companion_.Number(L"EventInputBytes"), 17U);
  EXPECT_EQ(companion_.Text(L"EventInput"), number(&in));
  EXPECT_EQ(companion_.Number(L"EventOutputBytes"), 4U);
  EXPECT_EQ(companion_.Text(L"EventOutput"), number(&out));
  EXPECT_EQ(GetModuleHandleW(kCompanionFile), nullptr);

  wchar_t name[100] = {};
  DWORD units = 100;
  ASSERT_NE(GetComputerNameW(name, &units), FALSE);
  ASSERT_EQ(render_.Codes(), std::vector<int>{20498});
  const std::vector<std::uint8_t>& bytes = render_.escapes[0].input;
  ASSERT_EQ(bytes.size(), sizeof(name));
  EXPECT_EQ(std::memcmp(bytes.data(), name, sizeof(name)), 0);
}

TEST_F(DocumentEvents, DoNotAskTheCompanionForItsOpinion) {
  companion_.SetNumber(L"EventAnswer", 0xFFFFFFFF);
  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTDOC), 1);
  EXPECT_EQ(companion_.Number(L"EventCalls"), 1U);
  EXPECT_EQ(render_.Codes(), std::vector<int>{20498});
}

TEST_F(DocumentEvents, WithoutTheCompanionDoNothingAtTheStart) {
  ChangeModel();
  RemoveCompanion();
  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTDOC), 1);
  InstallCompanion();
  EXPECT_TRUE(render_.escapes.empty());
}

TEST_F(DocumentEvents, RefuseAJobWhoseModelHasChangedAfterABox) {
  ChangeModel();
  SheetDriver job([this] { return Raise(DOCUMENTEVENT_STARTDOC); });
  const auto box = job.AnswerBox();
  ASSERT_TRUE(box.has_value());
  EXPECT_EQ(box->text, L"Info. Now it is Hazel 2 Series. Look again.");
  EXPECT_EQ(box->title, L"Hazel 2 Series");
  EXPECT_EQ(job.Result(), -1);
  EXPECT_TRUE(render_.escapes.empty());
  EXPECT_EQ(companion_.Number(L"EventCalls"), 1U);
}

struct ShownBox {
  HWND owner;
  UINT style;
};
ShownBox shownBox;

int WINAPI TakeBox(HWND owner, LPCWSTR /*text*/, LPCWSTR /*title*/, UINT style) {
  shownBox = {owner, style};
  return IDOK;
}

TEST_F(DocumentEvents, ShowThatBoxWithAWarningSignAndWithoutAnOwner) {
  ChangeModel();
  const ImportPatch patch(kDriverLibraryFile, "USER32.dll", "MessageBoxW",
                          reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(&TakeBox)));
  shownBox = {GetDesktopWindow(), 0};
  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTDOC), -1);
  EXPECT_EQ(shownBox.owner, nullptr);
  EXPECT_EQ(shownBox.style, UINT{MB_ICONWARNING});
}

TEST_F(DocumentEvents, RefuseNoJobWhoseModelIsTheSame) {
  ChangeModel();
  printersValues_.Set(L"ConfigPrinterName", TextValue(L"Hazel 2 Series"));
  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTDOC), 1);
  EXPECT_EQ(render_.Codes(), std::vector<int>{20498});
}

TEST_F(DocumentEvents, StampAPageBetweenTwoEscapes) {
  WatermarkData& watermark = render_.job.WatermarkData;
  watermark = kFactoryWatermarkRecords[kNoWatermark];
  watermark.PageWMIndex = 1;
  watermark.PageWMFlag = 1;
  watermark.PageWMText[0] = u'W';
  render_.job.FirstPageOnly = 1;
  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTPAGE), 1);
  render_.escapes.clear();
  EXPECT_EQ(Raise(DOCUMENTEVENT_ENDPAGE), 1);
  const std::vector<int> stamped = render_.Codes();
  ASSERT_GE(stamped.size(), 5U);
  EXPECT_EQ(std::vector<int>(stamped.begin(), stamped.begin() + 4),
            (std::vector<int>{20481, 20492, 20485, 20482}));
  EXPECT_EQ(stamped.back(), 20484);
  EXPECT_EQ(std::ranges::count(stamped, 20484), 1);

  EXPECT_EQ(Raise(DOCUMENTEVENT_STARTPAGE), 1);
  render_.escapes.clear();
  EXPECT_EQ(Raise(DOCUMENTEVENT_ENDPAGE), 1);
  EXPECT_EQ(render_.Codes(), (std::vector<int>{20481, 20492, 20485}));
}

// ---- Adjustments for XPS documents --------------------------------------------------------------

// As the platform documents them; the compiler's headers don't have them.
struct DocumentedValue {
  int ePropertyType;
  union {
    BYTE propertyByte;
    PWSTR propertyString;
    LONG propertyInt32;
    LONGLONG propertyInt64;
    struct {
      DWORD cbBuf;
      LPVOID pBuf;
    } propertyBlob;
  } value;
};
struct DocumentedProperty {
  WCHAR* propertyName;
  DocumentedValue propertyValue;
};
struct DocumentedCollection {
  ULONG numberOfProperties;
  DocumentedProperty* propertiesCollection;
};

class XpsAdjustments : public testing::Test {
 protected:
  XpsAdjustments() {
    properties_[0].propertyName = compression_.data();
    properties_[0].propertyValue.ePropertyType = 2;
    properties_[0].propertyValue.value.propertyInt32 = 77;
    properties_[1].propertyName = resolution_.data();
    properties_[1].propertyValue.ePropertyType = 2;
    properties_[1].propertyValue.value.propertyInt32 = 77;
    properties_[2].propertyName = area_.data();
    properties_[2].propertyValue.ePropertyType = 10;
    properties_[2].propertyValue.value.propertyBlob = {sizeof(edges_), edges_};
  }

  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
  Printer printer_{kTestPrinter};
  std::wstring compression_ = L"MxdcImageCompressionType";
  std::wstring resolution_ = L"MxdcDotsPerInch";
  std::wstring area_ = L"MxdcImageableArea";
  ULONG edges_[4] = {};
  DocumentedProperty properties_[3] = {};
  DocumentedCollection collection_ = {3, properties_};
};

TEST_F(XpsAdjustments, AreMadeInTheCallersCollection) {
  Record record;
  ASSERT_EQ(AskDefaultRecord(printer_.get(), record), IDOK);
  record.devmode()->dmPaperSize = DMPAPER_A4;
  record.devmode()->dmPrintQuality = 0;
  EXPECT_EQ(driver_->MxdcGetPDEVAdjustment(printer_.get(), kDriverDevmodeBytes, record.devmode(),
                                           sizeof(collection_), &collection_),
            S_OK);
  EXPECT_EQ(properties_[0].propertyValue.value.propertyInt32, 0);
  EXPECT_EQ(properties_[1].propertyValue.value.propertyInt32, 600);
  EXPECT_EQ(std::vector<ULONG>(edges_, edges_ + 4),
            (std::vector<ULONG>{4000, 4000, 206000, 293000}));
}

TEST_F(XpsAdjustments, FollowTheUsersCountryForAnUnknownPaper) {
  Record record;
  ASSERT_EQ(AskDefaultRecord(printer_.get(), record), IDOK);
  record.devmode()->dmPaperSize = 0;
  EXPECT_EQ(driver_->MxdcGetPDEVAdjustment(nullptr, kDriverDevmodeBytes, record.devmode(),
                                           sizeof(collection_), &collection_),
            S_OK);
  const bool isA4 = PaperOfUsersCountry().id == DMPAPER_A4;
  EXPECT_EQ(edges_[2], isA4 ? 206000U : 211900U);
  EXPECT_EQ(edges_[3], isA4 ? 293000U : 275400U);
}

// 1181 by 2362 pixels are 50.0 by 100.0 mm. No call before this one has looked for the file.
TEST_F(XpsAdjustments, HaveTheSizeOfAStoredPaperFromTheFirstCallOn) {
  constexpr std::int16_t kStoredPaper = 288;
  SettingsPlace place;
  place.Write(
      SettingsTree{.customPapers = {CustomPaperLeaf("Card", {1181, 2362, L"Card", kStoredPaper})}}
          .Bytes());
  Record record;
  ASSERT_EQ(AskDefaultRecord(printer_.get(), record), IDOK);
  record.devmode()->dmPaperSize = kStoredPaper;
  const CopiedLibrary fresh({kDriverLibraryFile, kLanguageLibraryFile, kPictureLibraryFile});
  EXPECT_EQ(fresh->MxdcGetPDEVAdjustment(nullptr, kDriverDevmodeBytes, record.devmode(),
                                         sizeof(collection_), &collection_),
            S_OK);
  EXPECT_EQ(std::vector<ULONG>(edges_, edges_ + 4), (std::vector<ULONG>{4000, 4000, 46000, 96000}));
}

TEST_F(XpsAdjustments, OfNothingAreNotImplemented) {
  EXPECT_EQ(driver_->MxdcGetPDEVAdjustment(nullptr, 0, nullptr, 0, nullptr), E_NOTIMPL);
  collection_.numberOfProperties = 0;
  EXPECT_EQ(driver_->MxdcGetPDEVAdjustment(nullptr, 0, nullptr, sizeof(collection_), &collection_),
            E_NOTIMPL);
}

// The area has no page, so the walk ends there.
TEST_F(XpsAdjustments, WithoutARecordSetTheResolution) {
  EXPECT_EQ(driver_->MxdcGetPDEVAdjustment(nullptr, 0, nullptr, sizeof(collection_), &collection_),
            S_OK);
  EXPECT_EQ(properties_[1].propertyValue.value.propertyInt32, 600);
  EXPECT_EQ(edges_[2], 0U);
}

}  // namespace
}  // namespace ostrel::print_system
