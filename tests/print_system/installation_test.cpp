// The driver as the print system keeps it after an installation, and the record that it stores for
// a printer.
#include "print_system_fixture.h"

#include <algorithm>

namespace ostrel::print_system {
namespace {

std::wstring FileNameOf(std::wstring_view path) {
  return std::wstring(path.substr(path.rfind(L'\\') + 1));
}

// The answer of GetPrinterDriverW or GetPrinterW, with the memory that its pointers lead into.
template <typename Info>
class InfoBlock {
 public:
  template <typename Call>
  explicit InfoBlock(Call call) {
    DWORD needed = 0;
    call(nullptr, 0, &needed);
    bytes_.resize(needed);
    if (call(bytes_.data(), needed, &needed) == FALSE) {
      ThrowLastError("level query");
    }
  }
  const Info* operator->() const { return reinterpret_cast<const Info*>(bytes_.data()); }

 private:
  std::vector<BYTE> bytes_;
};

class Installation : public testing::Test {
 protected:
  InfoBlock<DRIVER_INFO_3W> DriverInfo() const {
    return InfoBlock<DRIVER_INFO_3W>([this](BYTE* buffer, DWORD size, DWORD* needed) {
      return GetPrinterDriverW(printer_.get(), nullptr, 3, buffer, size, needed);
    });
  }
  InfoBlock<PRINTER_INFO_2W> PrinterInfo() const {
    return InfoBlock<PRINTER_INFO_2W>([this](BYTE* buffer, DWORD size, DWORD* needed) {
      return GetPrinterW(printer_.get(), 2, buffer, size, needed);
    });
  }

  Printer printer_{kTestPrinter};
};

TEST_F(Installation, KeepsTheDriverUnderItsName) {
  EXPECT_EQ(std::wstring_view(DriverInfo()->pName), kOstrelDriverName);
  EXPECT_EQ(std::wstring_view(PrinterInfo()->pDriverName), kOstrelDriverName);
}

TEST_F(Installation, KeepsTheFilesInTheFolderOfUserModeDrivers) {
  const auto info = DriverInfo();
  const std::wstring folder = DriverFolder() + L"\\3\\";
  EXPECT_EQ(info->pConfigFile, folder + kDriverLibraryFile);
  EXPECT_EQ(info->pDriverPath, folder + kDriverLibraryFile);
  EXPECT_EQ(info->pDataFile, folder + kPrinterDescriptionFile);
}

TEST_F(Installation, KeepsTheFilesThatTheDriverLooksForBesideIt) {
  const auto info = DriverInfo();
  std::vector<std::wstring> names;
  for (const wchar_t* file = info->pDependentFiles; *file != L'\0';) {
    EXPECT_NE(GetFileAttributesW(file), INVALID_FILE_ATTRIBUTES) << Utf8(file);
    names.push_back(FileNameOf(file));
    file += std::wstring_view(file).size() + 1;
  }
  EXPECT_EQ(names,
            (std::vector<std::wstring>{kLanguageLibraryFile, kGermanLibraryFile, kHebrewLibraryFile,
                                       kPictureLibraryFile, kConfigFile}));
}

TEST_F(Installation, DoneAgainSucceeds) {
  EXPECT_NO_THROW(InstallDriver(OstrelPackage(), ProgramFolder()));
  EXPECT_NO_THROW(AddPrinterWithDriver(kTestPrinter, kOstrelDriverName));
}

TEST_F(Installation, OfAPrinterWithANameInAnotherScriptAnswersToo) {
  const std::wstring name = L"\u041F\u0440\u0438\u043D\u0442\u0435\u0440 \u05D0 \u4E2D";
  AddPrinterWithDriver(name, kOstrelDriverName);
  EXPECT_EQ(DeviceCapabilitiesW(name.c_str(), L"LPT1:", DC_PAPERS, nullptr, nullptr), 28);
  const Printer printer(name);
  EXPECT_EQ(DocumentPropertiesW(nullptr, printer.get(), Writable(name), nullptr, nullptr, 0), 7896);
}

// ---- The stored record --------------------------------------------------------------------------

// Stores a default record for the printer, and the former one again at the end.
class StoredRecord : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(AskDefaultRecord(printer_.get(), before_), 1); }
  void TearDown() override { Store(before_); }

  void Store(Record& record) {
    PRINTER_INFO_8W info = {record.devmode()};
    ASSERT_NE(SetPrinterW(printer_.get(), 8, reinterpret_cast<LPBYTE>(&info), 0), FALSE);
  }

  Printer printer_{kTestPrinter};
  Record before_;
};

TEST_F(StoredRecord, IsWhereTheDefaultsComeFrom) {
  Record stored = before_;
  stored.devmode()->dmCopies = 5;
  stored.privatePart().MultipleUp = 4;
  Store(stored);
  Record out;
  ASSERT_EQ(AskDefaultRecord(printer_.get(), out), 1);
  EXPECT_EQ(out.devmode()->dmCopies, 5);
  EXPECT_EQ(out.privatePart().MultipleUp, 4);
}

TEST_F(StoredRecord, GivesWayToTheCallers) {
  Record stored = before_;
  stored.devmode()->dmCopies = 5;
  Store(stored);
  Record callers = before_;
  callers.devmode()->dmCopies = 7;
  Record out;
  ASSERT_EQ(AskRepairedRecord(printer_.get(), callers, out), 1);
  EXPECT_EQ(out.devmode()->dmCopies, 7);
}

TEST_F(StoredRecord, StandsInForAValueOfTheCallersThatIsIgnored) {
  Record stored = before_;
  stored.devmode()->dmCopies = 5;
  Store(stored);
  Record callers = before_;
  callers.devmode()->dmCopies = 0;
  Record out;
  ASSERT_EQ(AskRepairedRecord(printer_.get(), callers, out), 1);
  EXPECT_EQ(out.devmode()->dmCopies, 5);
}

TEST_F(StoredRecord, IsRepairedLikeAnyOther) {
  Record stored = before_;
  stored.privatePart().Thickness = 9;
  stored.privatePart().CustomPaperSize[3].Width = 2000;
  Store(stored);
  Record out;
  ASSERT_EQ(AskDefaultRecord(printer_.get(), out), 1);
  EXPECT_EQ(out.privatePart().Thickness, 2);
  EXPECT_EQ(out.privatePart().CustomPaperSize[3].Width, 0);
}

}  // namespace
}  // namespace ostrel::print_system
