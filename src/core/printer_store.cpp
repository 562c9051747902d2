#include "core/printer_store.h"

#include "core/language.h"
#include "core/own_place.h"
#include "core/process_state.h"
#include "core/settings_record.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ostrel {
namespace {

// Printer data are shared by all users, any of whom may have written any length. No block of this
// driver comes near this one.
constexpr std::uint32_t kLargestBlockBytes = 0x10000;

constexpr std::size_t kUserNameCharacters = 31;
constexpr std::size_t kStoredTextBytes = 260;
constexpr std::size_t kValueNameUnits = 64;

struct BlockNames {
  std::u16string_view size;
  std::u16string_view data;
};

// clang-format off
constexpr std::array<BlockNames, 5> kBlockNames = {{
    // Size value                 Data value
    {u"PrinterDataSize",        u"PrinterData"},
    {u"DeviceDataSize",         u"DeviceData"},
    {u"PrivateDevmodeDataSize", u"PrivateDevmodeData"},
    {u"CustomPaperSize",        u"CustomPaperData"},
    {u"FontDataSize",           u"FontData"},
}};
// clang-format on
constexpr BlockNames kTrayNames = {u"TrayInstallSize", u"TrayInstall"};

constexpr const char16_t* kTrayValues[kOptionalTrays] = {u"TrayInstall1", u"TrayInstall2"};

void ReportGetPrinterFailure(std::uint32_t level) {
  char16_t buffer[80];
  TextBuilder line(buffer);
  line.Add(u"Registry_GetHL fail, level:")
      .AddNumber(level)
      .Add(u", error code is ")
      .AddNumber(World().debug.GetLastError())
      .Add(u"\n");
  World().debug.OutputDebugStringW(buffer);
}

// ---- Printer data -------------------------------------------------------------------------------

// A value name, with the user's name behind it where each user has a value of his own.
class ValueName {
 public:
  ValueName(std::u16string_view name, std::u16string_view userName) {
    TextBuilder(text_).Add(name).Add(userName);
  }
  const char16_t* get() const { return text_.data(); }

 private:
  std::array<char16_t, kValueNameUnits> text_;
};

// The user's name, kept to its first 31 characters; empty when the system doesn't tell it.
class UserName {
 public:
  UserName() {
    std::uint32_t units = kUserNameUnits;
    if (!World().security.GetUserNameW(text_.data(), &units)) {
      text_.front() = u'\0';
    }
  }
  std::u16string_view view() const { return FieldText(text_).substr(0, kUserNameCharacters); }

 private:
  std::array<char16_t, kUserNameUnits> text_ = {};
};

bool WritePair(PrinterHandle printer, const BlockNames& names, std::u16string_view userName,
               const void* data, std::uint32_t sizeBytes) {
  return World().print.SetPrinterDataW(printer, ValueName(names.size, userName).get(), kRegDword,
                                       &sizeBytes, sizeof(sizeBytes)) == kErrorSuccess &&
         World().print.SetPrinterDataW(printer, ValueName(names.data, userName).get(), kRegBinary,
                                       data, sizeBytes) == kErrorSuccess;
}

// Reads a pair into a block of at least a T's size, zeros behind what was stored.
// `noMemory`, where it is asked for, tells a block that there was no memory for from a missing one.
template <typename T>
HeapBlock<T> ReadPair(PrinterHandle printer, const BlockNames& names, std::uint32_t* sizeBytes,
                      bool* noMemory = nullptr) {
  std::uint32_t type = 0;
  std::uint32_t needed = 0;
  *sizeBytes = 0;
  if (World().print.GetPrinterDataW(printer, ValueName(names.size, {}).get(), &type, sizeBytes,
                                    sizeof(*sizeBytes), &needed) != kErrorSuccess ||
      *sizeBytes == 0 || *sizeBytes > kLargestBlockBytes) {
    return {};
  }
  HeapBlock<T> block(std::max<std::size_t>(*sizeBytes, sizeof(T)));
  if (noMemory != nullptr) {
    *noMemory = !block;
  }
  if (block && World().print.GetPrinterDataW(printer, ValueName(names.data, {}).get(), &type,
                                             block.get(), *sizeBytes, &needed) != kErrorSuccess) {
    block.reset();
  }
  return block;
}

// ---- Per-user store -----------------------------------------------------------------------------

// The text form of the calling process's user SID, in `text`. Result: whether it could be had.
bool GetUserSid(std::span<char16_t> text) {
  Security& security = World().security;
  TokenHandle token = nullptr;
  if (!security.OpenProcessToken(&token)) {
    return false;
  }
  const HeapBlock<TokenUser> user = AskForBlock<TokenUser>(
      [&](TokenUser* buffer, std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
        return security.GetTokenInformation(token, kTokenUser, buffer, sizeBytes, neededBytes);
      });
  char16_t* sid = nullptr;
  const bool had = user && security.ConvertSidToStringSidW(user->Sid, &sid);
  if (had) {
    CopyText(text, CallerText(sid));
    security.LocalFree(sid);
  }
  security.CloseHandle(token);
  return had;
}

// The key of a subkey in the calling user's subtree, made if it is missing; closed with the scope.
class UserKey {
 public:
  explicit UserKey(const char16_t* subkey) {
    char16_t sid[200];
    if (!GetUserSid(sid)) {
      return;
    }
    char16_t path[sizeof(sid) / sizeof(sid[0]) + kMaxPathUnits + 64];
    TextBuilder text(path);
    text.Add(FieldText(sid)).Add(u"\\SOFTWARE\\OstrelUPD\\").Add(CallerText(subkey));
    if (!text.fits() || World().registry.RegCreateKeyExW(path, &key_) != kErrorSuccess) {
      key_ = nullptr;
    }
  }
  ~UserKey() {
    if (key_ != nullptr) {
      World().registry.RegCloseKey(key_);
    }
  }
  UserKey(const UserKey&) = delete;
  UserKey& operator=(const UserKey&) = delete;

  RegistryKey get() const { return key_; }
  explicit operator bool() const { return key_ != nullptr; }

 private:
  RegistryKey key_ = nullptr;
};

bool WriteUserValue(const char16_t* valueName, std::uint32_t type, const void* data,
                    std::uint32_t sizeBytes, const char16_t* subkey) {
  const UserKey key(subkey);
  return key && World().registry.RegSetValueExW(key.get(), valueName, type, data, sizeBytes) ==
                    kErrorSuccess;
}

bool UserDwordIsOne(const char16_t* valueName, const char16_t* subkey) {
  std::uint32_t value = 0;
  ReadUserValue(valueName, &value, subkey);
  return value == 1;
}

// ---- Universal mode -----------------------------------------------------------------------------

// The caption that tells the model: "Model: NAME ", or the printer's name where either is missing.
void WriteCaption(ModuleHandle module, const char16_t* printerName) {
  UserText model = {};
  UserText word = {};
  UserText caption;
  TextBuilder text(caption);
  if (ReadUserValue(u"PrinterName", model, printerName) &&
      LoadExistingString(module, kStringCurrentSettings, word)) {
    text.Add(FieldText(word)).Add(u":").Add(FieldText(model)).Add(u" ");
  } else {
    text.Add(CallerText(printerName));
  }
  WriteUserString(u"ConfigPrintInfo", caption.data(), printerName);
}

// The words of the warning that a job gets when the model has changed since the sheet.
void WriteWarningWords(ModuleHandle module, const char16_t* printerName) {
  UserText first = {};
  UserText second = {};
  if (LoadExistingString(module, kStringModelChangedAdvice, first) &&
      LoadExistingString(module, kStringModelChanged, second)) {
    WriteUserString(u"RegTips", first.data(), printerName);
    WriteUserString(u"RegTips2", second.data(), printerName);
  }
}

// The printer's trays hold for the user as long as its settings were saved for the model in force.
TrayBlock TraysOfModel(const UIContext& context, const UserText& model) {
  UserText savedModel = {};
  if (!ReadUserValue(u"SettingPrinterModel", savedModel, context.driverName) ||
      FieldText(savedModel) != FieldText(model)) {
    return {};
  }
  std::uint32_t size = 0;
  const HeapBlock<TrayBlock> block = ReadTrayBlock(context.printerHandle, &size);
  return block ? *block : TrayBlock{};
}

}  // namespace

HeapBlock<PrinterInfo2> GetPrinterInfo2(PrinterHandle printer) {
  constexpr std::uint32_t kLevel = 2;
  HeapBlock<PrinterInfo2> info = AskForBlock<PrinterInfo2>(
      [printer](PrinterInfo2* buffer, std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
        return World().print.GetPrinterW(printer, kLevel, buffer, sizeBytes, neededBytes);
      });
  if (!info) {
    ReportGetPrinterFailure(kLevel);
  }
  return info;
}

bool ReadPrinterName(PrinterHandle printer, std::span<char16_t> name) {
  const HeapBlock<PrinterInfo2> info = GetPrinterInfo2(printer);
  CopyText(name, info ? CallerText(info->pPrinterName) : std::u16string_view());
  return static_cast<bool>(info);
}

bool WritePrinterBlock(PrinterHandle printer, const void* data, std::uint32_t sizeBytes,
                       PrinterBlock block) {
  const BlockNames& names = kBlockNames[static_cast<std::size_t>(block)];
  if (block == PrinterBlock::kPrivateDevmode) {
    return WritePair(printer, names, UserName().view(), data, sizeBytes);
  }
  return WritePair(printer, names, {}, data, sizeBytes);
}

HeapBlock<TrayBlock> ReadTrayBlock(PrinterHandle printer, std::uint32_t* sizeBytes) {
  return ReadPair<TrayBlock>(printer, kTrayNames, sizeBytes);
}

bool WriteTrayBlock(PrinterHandle printer, const TrayBlock& block) {
  return WritePair(printer, kTrayNames, {}, &block, sizeof(block));
}

bool ReadUserValue(const char16_t* valueName, std::uint32_t* data, const char16_t* subkey) {
  const UserKey key(subkey);
  if (!key) {
    return false;
  }
  std::uint32_t type = 0;
  std::uint32_t value = 0;
  std::uint32_t size = sizeof(value);
  if (World().registry.RegQueryValueExW(key.get(), valueName, &type, &value, &size) ==
          kErrorSuccess &&
      type == kRegDword && size == sizeof(value)) {
    *data = value;
  }
  return true;
}

bool ReadUserValue(const char16_t* valueName, std::span<char16_t> text, const char16_t* subkey) {
  const UserKey key(subkey);
  if (!key) {
    return false;
  }
  // One unit more than is read stays zero, since what was stored may lack its terminator.
  std::array<char16_t, kUserTextUnits + 1> value = {};
  std::uint32_t type = 0;
  std::uint32_t size = kUserTextUnits * sizeof(char16_t);
  if (World().registry.RegQueryValueExW(key.get(), valueName, &type, value.data(), &size) ==
          kErrorSuccess &&
      type == kRegSz) {
    CopyText(text, FieldText(value).substr(0, kUserTextUnits - 1));
  }
  return true;
}

UserText ReadUserText(const char16_t* valueName, const char16_t* subkey) {
  UserText text = {};
  ReadUserValue(valueName, text, subkey);
  return text;
}

bool WriteUserDword(const char16_t* valueName, std::uint32_t data, const char16_t* subkey) {
  return WriteUserValue(valueName, kRegDword, &data, sizeof(data), subkey);
}

bool WriteUserString(const char16_t* valueName, const char16_t* text, const char16_t* subkey) {
  UserText buffer = {};
  CopyText(buffer, CallerText(text));
  return WriteUserValue(valueName, kRegSz, buffer.data(), kStoredTextBytes, subkey);
}

bool IsUniversalPrinter(const char16_t* printerName) {
  return UserDwordIsOne(u"InstallMode", printerName);
}

int CountMissingTrays(PrinterHandle printer) {
  const HeapBlock<PrinterInfo2> info = GetPrinterInfo2(printer);
  const char16_t* printerName = info ? info->pPrinterName : nullptr;
  TrayBlock trays = {};
  if (printerName != nullptr &&
      (IsUniversalPrinter(printerName) || UserDwordIsOne(u"UPD", printerName))) {
    for (int tray = 0; tray < kOptionalTrays; ++tray) {
      ReadUserValue(kTrayValues[tray], &trays.Trays[static_cast<std::size_t>(tray)], printerName);
    }
  } else {
    std::uint32_t size = 0;
    if (const HeapBlock<TrayBlock> block = ReadTrayBlock(printer, &size)) {
      trays = *block;
    }
  }
  return static_cast<int>(
      std::ranges::count_if(trays.Trays, [](std::uint32_t word) { return word != kTrayFitted; }));
}

bool UpgradePrinterData(PrinterHandle printer) {
  constexpr std::uint16_t kVersion = kDevmodeDriverVersion;
  constexpr PrinterDataBlock kFresh = {
      .Version = kVersion, .Size = sizeof(PrinterDataBlock), .Reserved = 0};
  const BlockNames& names = kBlockNames[static_cast<std::size_t>(PrinterBlock::kPrinterData)];
  std::uint32_t size = 0;
  bool noMemory = false;
  HeapBlock<PrinterDataBlock> block = ReadPair<PrinterDataBlock>(printer, names, &size, &noMemory);
  if (noMemory) {
    return false;
  }
  if (!block) {
    size = sizeof(PrinterDataBlock);
    block = HeapBlock<PrinterDataBlock>(size);
    if (!block) {
      return false;
    }
    *block = kFresh;
  } else if (block->Version < kVersion) {
    // The block reader has put zeros behind a shorter block, so its first 8 bytes are there.
    size = sizeof(PrinterDataBlock);
    block->Version = kFresh.Version;
    block->Size = kFresh.Size;
  }
  WritePrinterBlock(printer, block.get(), size, PrinterBlock::kPrinterData);
  return true;
}

void ReadConfigValue(std::span<char16_t> output, const char16_t* section, const char16_t* key) {
  CopyText(output, {});
  const OwnPlace place;
  std::array<char16_t, kMaxPathUnits> path;
  TextBuilder text(path);
  // The separator comes twice; the platform takes that for one.
  text.Add(place.directory()).Add(u"\\").Add(place.modulePrefix()).Add(u"Config.ini");
  if (text.fits() && !place.directory().empty()) {
    World().files.GetPrivateProfileStringW(section, key, u"", output.data(),
                                           static_cast<std::uint32_t>(output.size()), path.data());
  }
}

void RecordUniversalPrinter(const UIContext& context, const char16_t* printerName) {
  if (!IsUniversalPrinter(printerName)) {
    return;
  }
  WriteCaption(context.languageModule, printerName);
  WriteWarningWords(context.languageModule, printerName);
  WriteUserString(u"ConfigPrinterName", ReadUserText(u"PrinterName", printerName).data(),
                  printerName);
  const UserText model = ReadUserText(u"PrinterModel", context.driverName);
  WriteUserString(u"ConfigPrinterModel", model.data(), printerName);
  // Written under the driver's name and counted under the printer's: when the two differ, the count
  // sees what the device page wrote.
  const TrayBlock trays = TraysOfModel(context, model);
  for (int tray = 0; tray < kOptionalTrays; ++tray) {
    WriteUserDword(kTrayValues[tray], trays.Trays[static_cast<std::size_t>(tray)],
                   context.driverName);
  }
}

}  // namespace ostrel
