#include "core/devmode_queries.h"

#include "core/devmode_lifecycle.h"
#include "core/heap_block.h"
#include "core/language.h"
#include "core/message_formatter.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/settings_record.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <algorithm>
#include <cstring>

namespace ostrel {
namespace {

constexpr std::int32_t kSheetFailed = -1;

bool FailWith(ErrorCode code) {
  World().debug.SetLastError(code);
  return false;
}

// The device name of a caller's record, terminated.
struct DeviceName {
  explicit DeviceName(const PublicDevmode& record) {
    CopyText(text, FieldText(record.dmDeviceName));
  }
  char16_t text[kDeviceNameUnits + 1];
};

void WriteRefusal(DevQueryPrintInfo& info) {
  const FormatArgument reason[] = {StringArgument{kStringRecordRefused}};
  const std::size_t room = info.pszErrorStr == nullptr ? 0 : info.cchErrorStr;
  info.cchNeeded = static_cast<std::uint32_t>(
      FormatMessageText({info.pszErrorStr, room}, u"%!", reason, Process().CurrentLanguageModule));
}

// What the caller's memory holds; a negative size holds nothing.
std::uint32_t RoomOf(std::int32_t sizeBytes) {
  return static_cast<std::uint32_t>(std::max<std::int32_t>(sizeBytes, 0));
}

bool ConvertToCallersHeader(const PublicDevmode* in, PublicDevmode* out, std::int32_t* sizeBytes) {
  const std::uint32_t room = RoomOf(*sizeBytes);
  if (out == nullptr || in == nullptr || room < kDevmodeHeaderBytes ||
      ReadHeader(out).TotalBytes() > room) {
    return FailWith(kErrorInvalidParameter);
  }
  // Words taken over from `in` may announce more than the caller's memory holds.
  const DevmodeHeader header = SettledHeader(out, in);
  if (header.TotalBytes() > room || ConvertDevmode(out, in) == 0) {
    return FailWith(kErrorInvalidParameter);
  }
  *sizeBytes = static_cast<std::int32_t>(header.TotalBytes());
  return true;
}

// Whether `out` is there and large enough; the size that is needed is told in any case.
bool HasRoomFor(std::uint32_t neededBytes, const PublicDevmode* out, std::int32_t* sizeBytes) {
  const bool fits = out != nullptr && RoomOf(*sizeBytes) >= neededBytes;
  *sizeBytes = static_cast<std::int32_t>(neededBytes);
  return fits || FailWith(kErrorInsufficientBuffer);
}

bool ConvertToOldHeader(const PublicDevmode* in, PublicDevmode* out, std::int32_t* sizeBytes) {
  // The old format's record: DEVMODEW of 192 bytes and 112 private ones.
  constexpr DevmodeHeader kOldHeader = {
      .specVersion = 800, .driverVersion = 848, .size = 192, .driverExtra = 112};
  if (!HasRoomFor(kOldHeader.TotalBytes(), out, sizeBytes)) {
    return false;
  }
  return ConvertDevmodeTo(kOldHeader, out, in) || FailWith(kErrorInvalidParameter);
}

// The printer's DRIVER_INFO_2. Null when there is none.
HeapBlock<DriverInfo2> GetDriverInfo2(PrinterHandle printer) {
  return AskForBlock<DriverInfo2>(
      [printer](DriverInfo2* buffer, std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
        constexpr std::uint32_t kLevel = 2;
        return World().print.GetPrinterDriverW(printer, nullptr, kLevel, buffer, sizeBytes,
                                               neededBytes);
      });
}

bool WriteDriverDefault(const char16_t* printerName, PublicDevmode* out, std::int32_t* sizeBytes) {
  if (!HasRoomFor(kDriverDevmodeBytes, out, sizeBytes)) {
    return false;
  }
  PrinterHandle printer = nullptr;
  if (!World().print.OpenPrinterW(printerName, &printer, nullptr)) {
    return false;
  }
  const HeapBlock<DriverInfo2> info = GetDriverInfo2(printer);
  if (info) {
    InitDriverDevmode(reinterpret_cast<DriverDevmode*>(out), info->pName, info->pName);
  }
  World().print.ClosePrinter(printer);
  return static_cast<bool>(info);
}

}  // namespace

bool DevQueryPrintEx(DevQueryPrintInfo* info) {
  if (info == nullptr || info->Level == 0) {
    return false;
  }
  if (info->pDevMode == nullptr) {
    return true;
  }
  HeapBlock<DriverDevmode> record(sizeof(DriverDevmode));
  if (!record) {
    return true;  // nothing speaks against the record
  }
  const DeviceName name(*info->pDevMode);
  if (InitDriverDevmode(record.get(), name.text, name.text) &&
      MergeDevmode(record.get(), info->pDevMode)) {
    return true;
  }
  WriteRefusal(*info);
  return false;
}

std::uint32_t DrvQueryJobAttributes(const PublicDevmode* devmode, std::uint32_t level,
                                    void* attributes) {
  if (level != 3 || devmode == nullptr || attributes == nullptr) {
    return 0;
  }
  // Values are taken as they stand; but a record that is too short to hold the private word prints
  // one page on a side.
  constexpr std::size_t kPlace = kPublicDevmodeBytes + offsetof(PrivateDevmode, MultipleUp);
  std::int16_t multipleUp = 1;
  const DevmodeHeader header = ReadHeader(devmode);
  if (header.TotalBytes() >= kPlace + sizeof(multipleUp)) {
    std::memcpy(&multipleUp, reinterpret_cast<const std::byte*>(devmode) + kPlace,
                sizeof(multipleUp));
  }
  const std::int16_t copies =
      header.TotalBytes() >= offsetof(PublicDevmode, dmCopies) + sizeof(PublicDevmode::dmCopies)
          ? devmode->dmCopies
          : std::int16_t{1};
  const AttributeInfo3 answer = {
      .dwJobNumberOfPagesPerSide = static_cast<std::uint32_t>(multipleUp),
      .dwDrvNumberOfPagesPerSide = static_cast<std::uint32_t>(multipleUp),
      .dwNupBorderFlags = 1,  // whether a border is drawn is the render driver's own knowledge
      .dwJobPageOrderFlags = 0,
      .dwDrvPageOrderFlags = 0,
      .dwJobNumberOfCopies = static_cast<std::uint32_t>(copies),
      .dwDrvNumberOfCopies = static_cast<std::uint32_t>(copies),
      .dwColorOptimization = 0,
      .dmPrintQuality = kResolution600,  // also for a job of 1200 dpi
      .dmYResolution = kResolution600,
  };
  std::memcpy(attributes, &answer, sizeof(answer));
  return 1;
}

bool DrvConvertDevMode(const char16_t* printerName, const PublicDevmode* in, PublicDevmode* out,
                       std::int32_t* sizeBytes, std::uint32_t mode) {
  if (sizeBytes == nullptr) {
    return FailWith(kErrorInvalidParameter);
  }
  switch (mode) {
    case kCdmConvert:
      return ConvertToCallersHeader(in, out, sizeBytes);
    case kCdmConvert351:
      return ConvertToOldHeader(in, out, sizeBytes);
    case kCdmDriverDefault:
      return WriteDriverDefault(printerName, out, sizeBytes);
    default:
      return false;
  }
}

bool DrvUpgradePrinter(std::uint32_t level, const void* upgradeInfo) {
  if (level != 1 || upgradeInfo == nullptr) {
    return FailWith(kErrorInvalidParameter);
  }
  const auto* info = static_cast<const DriverUpgradeInfo1*>(upgradeInfo);
  if (info->pPrinterName == nullptr) {
    return FailWith(kErrorInvalidParameter);
  }
  const PrinterDefaults access = {nullptr, nullptr, kPrinterAllAccess};
  PrinterHandle printer = nullptr;
  if (!World().print.OpenPrinterW(info->pPrinterName, &printer, &access)) {
    return false;
  }
  const bool written = UpgradePrinterData(printer);
  World().print.ClosePrinter(printer);
  return written;
}

std::int32_t DocumentPropertiesWithoutDialog(DocumentPropertyHeader* header) {
  if (header == nullptr) {
    return kSheetFailed;
  }
  header->cbOut = kDriverDevmodeBytes;
  if (header->fMode == 0 || header->pdmOut == nullptr) {
    return kDriverDevmodeBytes;
  }
  UIContext* context = CreateUIContext(header->hPrinter, header->pdmIn);
  if (context == nullptr) {
    return kSheetFailed;
  }
  if ((header->fMode & (kDmUpdate | kDmCopy)) != 0) {
    CopyDevmodeOut(&context->devmode, header->pdmIn, header->pdmOut);
  }
  FreeUIContext(context);
  return 1;
}

}  // namespace ostrel
