#include "platform/headless/headless_platform.h"

#include "platform/headless/names.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

namespace ostrel::headless {
namespace {

// Lays out a block as the spooler does: a structure first, and behind it what it points at. Without
// a buffer it only measures.
class BlockWriter {
 public:
  BlockWriter(std::byte* block, std::size_t structureBytes)
      : block_(block), place_(structureBytes) {}

  char16_t* Put(std::u16string_view text) {
    std::u16string terminated(text);
    return reinterpret_cast<char16_t*>(
        PutBytes(std::as_bytes(std::span(terminated.c_str(), terminated.size() + 1))));
  }

  std::byte* PutBytes(std::span<const std::byte> bytes) {
    constexpr std::size_t kAlignment = 8;
    place_ = (place_ + kAlignment - 1) / kAlignment * kAlignment;
    std::byte* start = block_ == nullptr ? nullptr : block_ + place_;
    if (start != nullptr) {
      std::copy(bytes.begin(), bytes.end(), start);
    }
    place_ += bytes.size();
    return start;
  }

  std::uint32_t size() const { return static_cast<std::uint32_t>(place_); }

 private:
  std::byte* block_;
  std::size_t place_;
};

PrinterInfo2 WriteInfo(BlockWriter& writer, const HeadlessPrinter& printer) {
  PrinterInfo2 info = {};
  info.pPrinterName = writer.Put(printer.name);
  info.pPortName = writer.Put(printer.port);
  info.pDriverName = writer.Put(printer.driverName);
  info.pDatatype = writer.Put(u"RAW");
  if (!printer.devmode.empty()) {
    info.pDevMode = reinterpret_cast<PublicDevmode*>(writer.PutBytes(printer.devmode));
  }
  return info;
}

PrinterInfo8 WriteDefaultRecord(BlockWriter& writer, const HeadlessPrinter& printer) {
  PrinterInfo8 info = {};
  if (!printer.devmode.empty()) {
    info.pDevMode = reinterpret_cast<PublicDevmode*>(writer.PutBytes(printer.devmode));
  }
  return info;
}

// The bytes of a record, as long as its own size words say.
std::vector<std::byte> RecordBytes(const PublicDevmode& record) {
  const auto* bytes = reinterpret_cast<const std::byte*>(&record);
  return {bytes, bytes + record.dmSize + record.dmDriverExtra};
}

DriverInfo2 WriteDriverInfo(BlockWriter& writer, const HeadlessPrinter& printer) {
  DriverInfo2 info = {};
  info.cVersion = 3;
  info.pName = writer.Put(printer.driverName);
  info.pDriverPath = writer.Put(printer.driverPath);
  info.pEnvironment = writer.Put(u"Windows x64");
  return info;
}

// The platform's protocol for blocks of unknown size. Result: the error code, or success.
template <typename Info>
std::uint32_t AnswerBlock(Info (*write)(BlockWriter&, const HeadlessPrinter&),
                          const HeadlessPrinter& printer, void* buffer, std::uint32_t sizeBytes,
                          std::uint32_t* neededBytes) {
  BlockWriter measure(nullptr, sizeof(Info));
  write(measure, printer);
  *neededBytes = measure.size();
  if (buffer == nullptr || sizeBytes < measure.size()) {
    return kErrorInsufficientBuffer;
  }
  BlockWriter writer(static_cast<std::byte*>(buffer), sizeof(Info));
  const Info info = write(writer, printer);
  std::memcpy(buffer, &info, sizeof(info));
  return kErrorSuccess;
}

}  // namespace

// ---- Memory -------------------------------------------------------------------------------------

void* HeadlessMemory::HeapAlloc(std::size_t sizeBytes) {
  if (faults_.ShouldFail("HeapAlloc")) {
    return nullptr;
  }
  void* block = std::calloc(1, std::max<std::size_t>(sizeBytes, 1));
  live_.insert(block);
  return block;
}

void HeadlessMemory::HeapFree(void* block) {
  if (block == nullptr) {
    return;
  }
  if (live_.erase(block) == 0) {
    std::fputs("HeapFree of a block that isn't allocated\n", stderr);
    std::abort();  // not thrown: blocks are freed by destructors
  }
  std::free(block);
}

// ---- Locale -------------------------------------------------------------------------------------

int HeadlessLocale::GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                                   int units) {
  if (faults_.ShouldFail("GetLocaleInfoW") || locale != kLocaleUserDefault ||
      type != kLocaleICountry) {
    debug_.SetLastError(kErrorInvalidParameter);
    return 0;
  }
  const int needed = static_cast<int>(country.size()) + 1;
  if (units == 0) {
    return needed;
  }
  if (units < needed) {
    debug_.SetLastError(kErrorInsufficientBuffer);
    return 0;
  }
  std::copy_n(country.c_str(), needed, buffer);
  return needed;
}

// ---- Print system -------------------------------------------------------------------------------

HeadlessPrinter& HeadlessPrintSystem::AddPrinter(HeadlessPrinter printer) {
  printers_.push_back(std::make_unique<HeadlessPrinter>(std::move(printer)));
  return *printers_.back();
}

HeadlessPrinter* HeadlessPrintSystem::Find(PrinterHandle printer) {
  const auto found = handles_.find(NumberOf(printer));
  return found == handles_.end() ? nullptr : found->second;
}

bool HeadlessPrintSystem::Fail(std::uint32_t code) {
  debug_.SetLastError(code);
  return false;
}

bool HeadlessPrintSystem::OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                                       const PrinterDefaults* defaults) {
  *printer = nullptr;
  lastDesiredAccess_ = defaults == nullptr ? 0 : defaults->DesiredAccess;
  const auto found = std::find_if(
      printers_.begin(), printers_.end(),
      [name](const auto& candidate) { return name != nullptr && candidate->name == name; });
  if (faults_.ShouldFail("OpenPrinterW") || found == printers_.end()) {
    return Fail(kErrorInvalidPrinterName);
  }
  const std::uintptr_t handle = nextHandle_;
  nextHandle_ += 8;
  handles_[handle] = found->get();
  *printer = HandleOf<PrinterHandle>(handle);
  return true;
}

bool HeadlessPrintSystem::ClosePrinter(PrinterHandle printer) {
  return handles_.erase(NumberOf(printer)) != 0 || Fail(kErrorInvalidHandle);
}

bool HeadlessPrintSystem::GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                                      std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
  *neededBytes = 0;
  HeadlessPrinter* found = Find(printer);
  if (faults_.ShouldFail("GetPrinterW") || found == nullptr || !found->describes) {
    return Fail(kErrorInvalidHandle);
  }
  if (level != 2 && level != 8) {
    return Fail(kErrorInvalidLevel);
  }
  const std::uint32_t error =
      level == 2 ? AnswerBlock(&WriteInfo, *found, buffer, sizeBytes, neededBytes)
                 : AnswerBlock(&WriteDefaultRecord, *found, buffer, sizeBytes, neededBytes);
  found->port.append(growth_, u' ');
  return error == kErrorSuccess || Fail(error);
}

bool HeadlessPrintSystem::GetPrinterDriverW(PrinterHandle printer, const char16_t* /*environment*/,
                                            std::uint32_t level, void* buffer,
                                            std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
  *neededBytes = 0;
  HeadlessPrinter* found = Find(printer);
  if (faults_.ShouldFail("GetPrinterDriverW") || found == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  if (level != 2) {
    return Fail(kErrorInvalidLevel);
  }
  const std::uint32_t error = AnswerBlock(&WriteDriverInfo, *found, buffer, sizeBytes, neededBytes);
  found->driverPath.append(growth_, u' ');
  return error == kErrorSuccess || Fail(error);
}

bool HeadlessPrintSystem::GetPrinterDriverDirectoryW(const char16_t* /*server*/,
                                                     const char16_t* /*environment*/,
                                                     std::uint32_t level, void* buffer,
                                                     std::uint32_t sizeBytes,
                                                     std::uint32_t* neededBytes) {
  *neededBytes = static_cast<std::uint32_t>((driverDirectory.size() + 1) * sizeof(char16_t));
  if (faults_.ShouldFail("GetPrinterDriverDirectoryW") || level != 1) {
    return Fail(kErrorInvalidLevel);
  }
  if (buffer == nullptr || sizeBytes < *neededBytes) {
    return Fail(kErrorInsufficientBuffer);
  }
  std::memcpy(buffer, driverDirectory.c_str(), *neededBytes);
  return true;
}

bool HeadlessPrintSystem::GetPrinterDriverDirectoryA(const char* /*server*/,
                                                     const char* /*environment*/,
                                                     std::uint32_t level, void* buffer,
                                                     std::uint32_t sizeBytes,
                                                     std::uint32_t* neededBytes) {
  constexpr char16_t kFirstUnknown = 0x80;
  *neededBytes = static_cast<std::uint32_t>(driverDirectory.size() + 1);
  if (faults_.ShouldFail("GetPrinterDriverDirectoryA") || level != 1) {
    return Fail(kErrorInvalidLevel);
  }
  if (buffer == nullptr || sizeBytes < *neededBytes) {
    return Fail(kErrorInsufficientBuffer);
  }
  auto* out = static_cast<char*>(buffer);
  for (const char16_t unit : driverDirectory) {
    *out++ = unit < kFirstUnknown ? static_cast<char>(unit) : '?';
  }
  *out = '\0';
  return true;
}

std::uint32_t HeadlessPrintSystem::GetPrinterDataW(PrinterHandle printer, const char16_t* name,
                                                   std::uint32_t* type, void* data,
                                                   std::uint32_t sizeBytes,
                                                   std::uint32_t* neededBytes) {
  *neededBytes = 0;
  const HeadlessPrinter* found = Find(printer);
  if (faults_.ShouldFail("GetPrinterDataW") || found == nullptr) {
    return kErrorInvalidHandle;
  }
  const auto value = found->data.find(name);
  if (value == found->data.end()) {
    return kErrorFileNotFound;
  }
  const std::vector<std::byte>& bytes = value->second.bytes;
  *type = value->second.type;
  *neededBytes = static_cast<std::uint32_t>(bytes.size());
  if (sizeBytes < bytes.size()) {
    return kErrorMoreData;
  }
  std::copy(bytes.begin(), bytes.end(), static_cast<std::byte*>(data));
  return kErrorSuccess;
}

std::uint32_t HeadlessPrintSystem::SetPrinterDataW(PrinterHandle printer, const char16_t* name,
                                                   std::uint32_t type, const void* data,
                                                   std::uint32_t sizeBytes) {
  HeadlessPrinter* found = Find(printer);
  if (faults_.ShouldFail("SetPrinterDataW") || found == nullptr) {
    return kErrorInvalidHandle;
  }
  const auto* bytes = static_cast<const std::byte*>(data);
  found->data[name] = {type, {bytes, bytes + sizeBytes}};
  return kErrorSuccess;
}

bool HeadlessPrintSystem::SetPrinterW(PrinterHandle printer, std::uint32_t level,
                                      const void* buffer, std::uint32_t command) {
  HeadlessPrinter* found = Find(printer);
  if (faults_.ShouldFail("SetPrinterW") || found == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  if (command != 0 || (level != 2 && level != 8)) {
    return Fail(kErrorInvalidLevel);
  }
  if (buffer == nullptr) {
    return Fail(kErrorInvalidParameter);
  }
  const PublicDevmode* record = nullptr;
  if (level == 2) {
    const auto& info = *static_cast<const PrinterInfo2*>(buffer);
    record = info.pDevMode;
    if (info.pPrinterName != nullptr) {
      found->name = info.pPrinterName;
    }
  } else {
    record = static_cast<const PrinterInfo8*>(buffer)->pDevMode;
  }
  if (record != nullptr) {
    found->devmode = RecordBytes(*record);
  }
  return true;
}

// ---- Modules ------------------------------------------------------------------------------------

void HeadlessModules::Install(std::u16string_view path, StringTable strings) {
  Resources resources;
  resources.strings = std::move(strings);
  InstallResources(path, std::make_shared<const Resources>(std::move(resources)));
}

void HeadlessModules::InstallResources(std::u16string_view path,
                                       std::shared_ptr<const Resources> resources) {
  auto library = std::make_shared<Library>();
  library->path = path;
  library->resources = std::move(resources);
  installed_[LowerCase(path)] = std::move(library);
}

void HeadlessModules::Export(std::u16string_view path, std::string_view name,
                             ExportedFunction function) {
  if (!installed_.contains(LowerCase(path))) {
    Install(path);
  }
  installed_[LowerCase(path)]->exports.insert_or_assign(std::string(name), function);
}

void HeadlessModules::Remove(std::u16string_view path) {
  installed_.erase(LowerCase(path));
}

HeadlessModules::Library* HeadlessModules::Find(ModuleHandle module) const {
  const auto found = known_.find(module);
  return found == known_.end() || found->second->loads == 0 ? nullptr : found->second.get();
}

const Resources* HeadlessModules::ResourcesOf(ModuleHandle module) const {
  const Library* library = Find(module);
  return library == nullptr ? nullptr : library->resources.get();
}

bool HeadlessModules::Fail(std::uint32_t code) {
  debug_.SetLastError(code);
  return false;
}

std::size_t HeadlessModules::loads() const {
  std::size_t total = 0;
  for (const auto& [handle, library] : known_) {
    total += library->loads;
  }
  return total;
}

std::size_t HeadlessModules::loadsOf(std::u16string_view path) const {
  const auto found = installed_.find(LowerCase(path));
  return found == installed_.end() ? 0 : found->second->loads;
}

std::uint32_t HeadlessModules::GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                                  std::uint32_t units) {
  const Library* library = Find(module);
  if (faults_.ShouldFail("GetModuleFileNameW") || library == nullptr || units == 0) {
    Fail(kErrorModuleNotFound);
    return 0;
  }
  const std::size_t copied = std::min<std::size_t>(library->path.size(), units - 1);
  std::copy_n(library->path.data(), copied, path);
  path[copied] = u'\0';
  if (copied < library->path.size()) {
    Fail(kErrorInsufficientBuffer);
    return units;
  }
  return static_cast<std::uint32_t>(copied);
}

ModuleHandle HeadlessModules::LoadLibraryW(const char16_t* path) {
  const auto found = installed_.find(LowerCase(path));
  if (faults_.ShouldFail("LoadLibraryW") || found == installed_.end()) {
    Fail(kErrorModuleNotFound);
    return nullptr;
  }
  const ModuleHandle handle = reinterpret_cast<ModuleHandle>(found->second.get());
  known_[handle] = found->second;
  ++found->second->loads;
  return handle;
}

bool HeadlessModules::FreeLibrary(ModuleHandle module) {
  Library* library = Find(module);
  if (library == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  --library->loads;
  return true;
}

int HeadlessModules::LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer,
                                 int units) {
  requestedStrings.push_back(id);
  const Library* library = Find(module);
  if (faults_.ShouldFail("LoadStringW") || library == nullptr || units <= 0) {
    return 0;
  }
  const StringTable& strings = library->resources->strings;
  const auto text = strings.find(id);
  if (text == strings.end()) {
    buffer[0] = u'\0';
    Fail(kErrorResourceNameNotFound);
    return 0;
  }
  const int copied = std::min(static_cast<int>(text->second.size()), units - 1);
  std::copy_n(text->second.data(), copied, buffer);
  buffer[copied] = u'\0';
  return copied;
}

bool HeadlessModules::FindResourceW(ModuleHandle module, std::uint32_t id, std::uint32_t type) {
  const Library* library = Find(module);
  if (faults_.ShouldFail("FindResourceW") || library == nullptr ||
      !library->resources->Holds(type, id)) {
    return Fail(kErrorResourceNameNotFound);
  }
  return true;
}

ExportedFunction HeadlessModules::GetProcAddress(ModuleHandle module, const char* name) {
  constexpr std::uint32_t kProcedureNotFound = 127;  // ERROR_PROC_NOT_FOUND
  const Library* library = Find(module);
  if (!faults_.ShouldFail("GetProcAddress") && library != nullptr) {
    if (const auto found = library->exports.find(std::string_view(name));
        found != library->exports.end()) {
      return found->second;
    }
  }
  Fail(kProcedureNotFound);
  return nullptr;
}

// ---- Threads, versions and activation contexts --------------------------------------------------

ActivationContext HeadlessSystem::CreateActCtxW(ModuleHandle module, std::uint32_t manifestId) {
  requestedManifests.push_back(manifestId);
  if (faults_.ShouldFail("CreateActCtxW") || modules_.ResourcesOf(module) == nullptr) {
    return ActivationContext::kNone;
  }
  const ActivationContext context{nextContext_};
  nextContext_ += 8;
  contexts_.insert(context);
  return context;
}

void HeadlessSystem::ReleaseActCtx(ActivationContext context) {
  contexts_.erase(context);
}

bool HeadlessSystem::CreateProcessW(const char16_t* application, char16_t* commandLine,
                                    std::uint32_t creationFlags, const char16_t* windowTitle,
                                    ProcessInformation* information) {
  if (faults_.ShouldFail("CreateProcessW") || application == nullptr) {
    return false;
  }
  startedProcesses.push_back({application, commandLine == nullptr ? u"" : commandLine,
                              creationFlags, windowTitle == nullptr ? u"" : windowTitle});
  constexpr std::uint32_t kHandleStep = 4;
  const auto next = [this] {
    const auto handle = HandleOf<ProcessHandle>(nextProcess_);
    nextProcess_ += kHandleStep;
    processHandles_.insert(handle);
    return handle;
  };
  *information = {};
  information->hProcess = next();
  information->hThread = next();
  return true;
}

bool HeadlessSystem::CloseHandle(ProcessHandle handle) {
  return processHandles_.erase(handle) != 0;
}

}  // namespace ostrel::headless
